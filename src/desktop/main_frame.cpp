#include "desktop/main_frame.h"

#include <QPrinter>

#include "base/failure.h"
#include "core/places.h"
#include "desktop/drawing_pictures.h"
#include "desktop/print_pages.h"
#include "drawing/automation/create_engine.h"
#include "ui/frame/mdi_main_menu.h"
#include "ui/screens/registry.h"

namespace norvelis::desktop {

namespace {

/// A failure is reported here: behind the engine's interface it would be lost.
bool Print(Host& host, ui::PrinterChoice& choice, const drawing::Document& document,
           std::optional<int> page) {
    QPrinter* printer = choice.Choose();
    if (!printer) return false;
    try {
        if (PrintPages(document, page, *printer)) return true;
        host.MessageBox("The printer does not take this drawing: " + printer->printerName().toStdString());
        return false;
    } catch (const RuntimeFailure& failure) {
        host.MessageBox(failure.what());
        return false;
    }
}

}  // namespace

DrawingTools::DrawingTools(AppState& app)
    : printer(app.host),
      engine(drawing::MakeDrawingEngine(
          {app.AppPath(places::kStencils), app.AppPath(places::kSnapshots),
           [this, &host = app.host](const drawing::Document& document, std::optional<int> page) {
               return Print(host, printer, document, page);
           },
           [&host = app.host](const std::function<void()>& work) {
               host.RunInBackground([&work](std::stop_token) { work(); });
           }})) {}

std::unique_ptr<ui::mdiMainMenu> MakeMainFrame(AppState& app, DrawingTools& tools,
                                               ui::LongCommands::Fail fail) {
    return std::make_unique<ui::mdiMainMenu>(ui::FrameParts{
        app, *tools.engine, OpenDrawingPicture, tools.printer, ui::AllScreens(), std::move(fail)});
}

}  // namespace norvelis::desktop
