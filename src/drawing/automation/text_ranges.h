#pragma once

#include <string>
#include <string_view>

#include "drawing/model/shape.h"

// Ranges of a shape's text: reading, replacing, and giving formats. Positions count characters (code points)
// from 0; a carriage return and a line feed are two. Ranges outside the text are cut to it.
namespace norvelis::drawing {

int TextLength(const Shape& shape);
std::string TextInRange(const Shape& shape, int begin, int end);

/// The new text takes the format of the first character that it replaces, or of the one in front of it.
void ReplaceText(Shape& shape, int begin, int end, std::string_view text);

/// Gives the range a format: a cell of the section Character or Paragraph. Row 0 is the shape's base format
/// and stays as it is; the range gets rows of its own, and rows that no text uses any more go.
void FormatText(Shape& shape, int begin, int end, Name section, Name cell, double value,
                Name unit = Name::None);

}  // namespace norvelis::drawing
