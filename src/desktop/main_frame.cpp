#include "desktop/main_frame.h"

#include "core/places.h"
#include "desktop/drawing_pictures.h"
#include "desktop/drawing_sheets.h"
#include "drawing/automation/create_engine.h"
#include "drawing/export/export.h"
#include "ui/frame/mdi_main_menu.h"
#include "ui/screens/registry.h"

namespace norvelis::desktop {

DrawingTools::DrawingTools(AppState& app)
    : printer(app),
      engine(drawing::MakeDrawingEngine({app.AppPath(places::kStencils), app.AppPath(places::kSnapshots),
                                         [&app](const drawing::Document& document, std::optional<int> page) {
                                             return PrintOpenDrawing(app, document, page);
                                         },
                                         [&host = app.host](const std::function<void()>& work) {
                                             host.RunInBackground(
                                                 [&work](const std::stop_token&) { work(); });
                                         }})) {}

std::unique_ptr<ui::mdiMainMenu> MakeMainFrame(AppState& app, DrawingTools& tools,
                                               ui::LongCommands::Fail fail) {
    const auto exportDrawing = [](const std::string& drawing, const std::string& out, int page) {
        drawing::render::Export(drawing, out, page);
    };
    return std::make_unique<ui::mdiMainMenu>(
        ui::FrameParts{app, *tools.engine, OpenDrawingPages, exportDrawing, drawing::render::LinkedSvg,
                       MakeSheetPrinting(), tools.printer, ui::AllScreens(), std::move(fail)});
}

}  // namespace norvelis::desktop
