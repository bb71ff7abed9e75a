#pragma once

#include <memory>

#include "core/app_state.h"
#include "engine/drawing_engine.h"
#include "ui/forms/long_commands.h"
#include "ui/forms/printer_choice.h"

namespace norvelis::ui {
class mdiMainMenu;
}

namespace norvelis::desktop {

/// What the program's screens draw and print with.
struct DrawingTools {
    explicit DrawingTools(AppState& app);

    ui::PrinterChoice printer;
    std::unique_ptr<engine::DrawingEngine> engine;
};

/// The main frame with all screens of the program. The tools must outlive it.
std::unique_ptr<ui::mdiMainMenu> MakeMainFrame(AppState& app, DrawingTools& tools,
                                               ui::LongCommands::Fail fail);

}  // namespace norvelis::desktop
