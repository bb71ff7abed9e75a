#include "desktop/drawing_tools.h"

#include <QPrinter>
#include <chrono>
#include <future>

#include "base/failure.h"
#include "core/places.h"
#include "desktop/drawing_pictures.h"
#include "desktop/print_pages.h"
#include "drawing/automation/create_engine.h"
#include "ui/frame/mdi_main_menu.h"

namespace norvelis::desktop {

namespace {

/// Long work in a thread of its own, while the event loop has its turns.
void RunAside(Host& host, const std::function<void()>& work) {
    constexpr auto kBetweenTurns = std::chrono::milliseconds(5);
    auto done = std::async(std::launch::async, work);
    while (done.wait_for(kBetweenTurns) != std::future_status::ready) host.Yield();
    done.get();
}

/// A failure is said here: behind the engine's interface it would be lost.
bool Print(ui::mdiMainMenu& frame, const drawing::Document& document, std::optional<int> page) {
    QPrinter* printer = frame.ChoosePrinter();
    if (!printer) return false;
    try {
        if (PrintPages(document, page, *printer)) return true;
        frame.App().host.MessageBox("The printer does not take this drawing: " +
                                    printer->printerName().toStdString());
        return false;
    } catch (const RuntimeFailure& failure) {
        frame.App().host.MessageBox(failure.what());
        return false;
    }
}

}  // namespace

std::unique_ptr<engine::DrawingEngine> GiveDrawingTools(ui::mdiMainMenu& frame) {
    AppState& app = frame.App();
    auto engine =
        drawing::MakeDrawingEngine({app.AppPath(places::kStencils), app.AppPath(places::kSnapshots),
                                    [&frame](const drawing::Document& document, std::optional<int> page) {
                                        return Print(frame, document, page);
                                    },
                                    [&app](const std::function<void()>& work) { RunAside(app.host, work); }});
    frame.SetDrawings(OpenDrawingPicture);
    frame.SetEngine(*engine);
    return engine;
}

}  // namespace norvelis::desktop
