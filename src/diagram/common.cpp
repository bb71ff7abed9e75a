#include "diagram/common.h"

#include "base/text.h"

namespace norvelis {

engine::Ref<engine::Document> GetStencil(const Reporter& report,
                                         const engine::Ref<engine::Documents>& documents,
                                         const std::string& fileName) {
    engine::Ref<engine::Document> stencil;
    if (documents) {
        stencil = documents->Item(fileName);
        if (!stencil) stencil = documents->OpenEx(fileName, engine::kOpenReadOnlyDocked);
    }
    if (!stencil) report("Stencil not found: " + std::string(kLineBreak) + fileName);
    return stencil;
}

engine::Ref<engine::Shape> DropShape(const Reporter& report, const engine::Ref<engine::Page>& page,
                                     const std::string& stencil, const std::string& master, double x,
                                     double y) {
    const auto application = page ? page->Application() : nullptr;
    if (!application) return nullptr;
    const auto document = GetStencil(report, application->Documents(), stencil);
    const auto masters = document ? document->Masters() : nullptr;
    const auto found = masters ? masters->Item(master) : nullptr;
    return found ? page->Drop(found, x, y) : nullptr;
}

engine::Ref<engine::Shape> PartOf(engine::Shape& group, std::string_view name) {
    const auto parts = group.Shapes();
    const int count = parts ? parts->Count() : 0;
    for (int i = 1; i <= count; ++i) {
        auto part = parts->Item(i);
        if (part && part->Name() == name) return part;
    }
    return nullptr;
}

std::string QuoteFormula(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

}  // namespace norvelis
