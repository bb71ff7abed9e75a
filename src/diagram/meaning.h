#pragma once

#include <string>
#include <string_view>

#include "diagram/drawing_state.h"

// Colours with a meaning, in place of random ones. Each value has a look of its own that differs in
// brightness or line pattern too, for people who see few colours and for prints in grey.
namespace norvelis {

struct Look {
    std::string color;    ///< A formula.
    std::size_t pattern;  ///< Of the outline or line, as drawings number them.
};
/// Of the n-th value, from 0: fill and outline of a box.
Look BoxLook(std::size_t n);
/// Of the n-th owner.
Look LineLook(std::size_t n);

/// The fill and outline of a box by what the person wants to see in it.
void ShowMeaning(DrawingState& drawing, engine::Shape& box, const Recordset& record);
/// The same for a value of a box of this drawing.
void FillByValue(const DrawingState& drawing, engine::Shape& shape, const std::string& value);

/// Colour and pattern of a line: those of its owner when the person wants that, otherwise random and solid.
/// False when the engine refuses the colour.
bool ColorLine(DrawingState& drawing, engine::Shape& line, const std::string& owner);

}  // namespace norvelis
