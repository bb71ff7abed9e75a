#pragma once

#include <memory>

#include "engine/drawing_engine.h"

namespace norvelis::ui {
class mdiMainMenu;
}

namespace norvelis::desktop {

/// Gives the frame what its screens draw, show and print with. The engine is the caller's and must outlive
/// the frame's commands.
std::unique_ptr<engine::DrawingEngine> GiveDrawingTools(ui::mdiMainMenu& frame);

}  // namespace norvelis::desktop
