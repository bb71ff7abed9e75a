#include "ui/controls/drawing_files.h"

#include "base/paths.h"
#include "base/text.h"

namespace norvelis::ui {

QString SavedDrawing(const std::string& folder, std::string_view schema, std::string_view name) {
    if (folder.empty()) return {};
    const std::string file =
        Resolve(folder + "\\" + std::string(Trim(schema)) + "\\" + std::string(Trim(name)) + ".vsd");
    return FileExists(file) ? QString::fromStdString(file) : QString();
}

}  // namespace norvelis::ui
