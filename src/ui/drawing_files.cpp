#include "ui/drawing_files.h"

#include "core/paths.h"
#include "core/text.h"
#include "store/settings.h"

namespace norvelis::ui {

std::string SavedDrawing(AppState& app, std::string_view schema, std::string_view name) {
    const std::string folder = getvisiolocation(app);
    if (folder.empty()) return {};
    const std::string file =
        Resolve(folder + "\\" + std::string(Trim(schema)) + "\\" + std::string(Trim(name)) + ".vsd");
    return FileExists(file) ? file : std::string();
}

}  // namespace norvelis::ui
