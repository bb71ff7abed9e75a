#include "diagram/former_drawing.h"

#include "base/paths.h"

namespace norvelis {

FormerDrawing::FormerDrawing(engine::Application& application, const std::string& file) {
    if (file.empty() || !FileExists(file)) return;
    const auto documents = application.Documents();
    const auto document = documents ? documents->Open(file) : nullptr;
    if (document) pages_ = document->Pages();
}

engine::Ref<engine::Page> FormerDrawing::PageNamed(const std::string& name) const {
    const int count = pages_ ? pages_->Count() : 0;
    for (int i = 1; i <= count; ++i) {
        auto page = pages_->Item(i);
        if (page && (count == 1 || page->Name() == name)) return page;
    }
    return nullptr;
}

}  // namespace norvelis
