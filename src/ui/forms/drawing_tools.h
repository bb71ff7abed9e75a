#pragma once

#include "ui/forms/screen_context.h"

namespace norvelis::ui {

class DrawingControl2;

/// Gives a drawing what takes more than its file: what the dictionary knows of a line that is clicked, and
/// export in the context menu.
void AddDrawingTools(DrawingControl2& drawing, const ScreenContext& context);

}  // namespace norvelis::ui
