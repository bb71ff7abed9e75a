#pragma once

#include <optional>

#include "core/app_state.h"
#include "ui/controls/drawing_sheets.h"

namespace norvelis::drawing {
struct Document;
}

namespace norvelis::desktop {

/// Drawings printed as they are shown, by the engine's own painter or through libvisio, and the print system.
ui::SheetPrinting MakeSheetPrinting();

/// Prints all pages of an open drawing, or one counted from 1, as the printer set-up says, on the printer
/// that was chosen last. False after words about why it was not printed.
bool PrintOpenDrawing(AppState& app, const drawing::Document& document, std::optional<int> page);

}  // namespace norvelis::desktop
