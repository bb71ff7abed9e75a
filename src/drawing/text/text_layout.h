#pragma once

#include <limits>
#include <string>
#include <vector>

#include "drawing/model/document.h"
#include "drawing/text/fonts.h"

// Text broken into lines: the one place that knows how wide and high a shape's text is. Inches; y grows
// downwards from the top of the text, x from the left margin.
namespace norvelis::drawing {

/// Characters of one line that share a format.
struct TextFragment {
    std::string text;
    int character = 0;  ///< Row of the section Character.
    double x = 0;       ///< Left end, alignment included.
    double width = 0;
};

struct TextLine {
    double top = 0, height = 0;
    double baseline = 0;  ///< From the top of the text.
    double width = 0;     ///< Without blanks at the end.
    std::vector<TextFragment> fragments;
};

struct TextLayout {
    std::vector<TextLine> lines;
    double width = 0;   ///< Of the widest line, indents included.
    double height = 0;  ///< Of all lines.
};

inline constexpr double kNoWrapping = std::numeric_limits<double>::infinity();

/// Breaks the shape's text in force into lines no wider than `width` (the text block's width less its
/// margins) and aligns them in it; without wrapping they are aligned in the widest line. A line breaks behind
/// a blank or a hyphen, inside a word only when the word alone is too wide.
TextLayout LayOutText(FontLibrary& fonts, const Document& document, const Shape& shape, double width);

/// The formula functions: size of the composed text with the text block's margins.
double TextWidth(FontLibrary& fonts, const Document& document, const Shape& shape,
                 double mostWidth = kNoWrapping);
double TextHeight(FontLibrary& fonts, const Document& document, const Shape& shape, double mostWidth);

}  // namespace norvelis::drawing
