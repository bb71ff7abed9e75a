#pragma once

#include <string>
#include <string_view>

#include "diagram/drawing_state.h"

// Colours with a meaning, in place of random ones. Each value has a look of its own that differs in
// brightness or line pattern too, for people who see few colours and for prints in grey.
namespace norvelis {

/// The fill and outline of a box by what the person wants to see in it.
void ShowMeaning(DrawingState& drawing, engine::Shape& box, const Recordset& record);

/// Colour and pattern of a line: those of its owner when the person wants that, otherwise random and solid.
/// False when the engine refuses the colour.
bool ColorLine(DrawingState& drawing, engine::Shape& line, const std::string& owner);

/// Beside the title, what the looks of this page mean; nothing when they mean nothing.
void AddLegend(DrawingState& drawing, const PageRef& page, const engine::Ref<engine::Master>& entry,
               engine::Shape& title);

}  // namespace norvelis
