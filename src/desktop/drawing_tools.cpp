#include "desktop/drawing_tools.h"

#include "core/failure.h"
#include "desktop/drawing_pictures.h"
#include "desktop/print_pages.h"
#include "drawing/engine/drawing_engine.h"
#include "ui/mdi_main_menu.h"

namespace norvelis::desktop {

namespace {

/// A failure is said here: behind the engine's interface it would be lost.
bool Print(ui::mdiMainMenu& frame, const drawing::Document& document, std::optional<int> page) {
    QPrinter* printer = frame.ChoosePrinter();
    if (!printer) return false;
    try {
        return PrintPages(document, page, *printer);
    } catch (const RuntimeFailure& failure) {
        frame.App().host.MessageBox(failure.what());
        return false;
    }
}

}  // namespace

std::unique_ptr<engine::DrawingEngine> GiveDrawingTools(ui::mdiMainMenu& frame) {
    const AppState& app = frame.App();
    auto engine =
        drawing::MakeDrawingEngine({app.AppPath("\\Stencils"), app.AppPath("\\Temp"),
                                    [&frame](const drawing::Document& document, std::optional<int> page) {
                                        return Print(frame, document, page);
                                    }});
    frame.SetDrawings(OpenDrawingPicture);
    frame.SetEngine(*engine);
    return engine;
}

}  // namespace norvelis::desktop
