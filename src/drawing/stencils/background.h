#pragma once

#include <string>
#include <vector>

#include "drawing/stencils/path.h"

// Page backgrounds as data. A background is a few layers, back first; each layer is one outline in a frame
// that is tied to the page: stretched over it, or a square that keeps its proportions and sits at an edge or
// corner. All colours are pale, so that boxes and lines in front stay the picture; nothing leaves the page.
namespace norvelis::drawing::stencils {

/// How a layer lies on the page.
struct Frame {
    bool square = false;
    /// Stretched: left, bottom, right, top in fractions of the page.
    double left = 0, bottom = 0, right = 1, top = 1;
    /// Square: side and distance from the page's edge in fractions of the page's shorter side; (anchorX,
    /// anchorY) says where: 0 left or bottom, 0.5 middle, 1 right or top.
    double side = 0, margin = 0, anchorX = 0, anchorY = 0;

    static Frame Page() { return {}; }
    static Frame Band(double bottom, double top) { return {false, 0, bottom, 1, top, 0, 0, 0, 0}; }
    static Frame Square(double side, double anchorX, double anchorY, double margin = 0) {
        return {true, 0, 0, 1, 1, side, margin, anchorX, anchorY};
    }
};

/// The published numbers of gradient fills, from the foreground to the background colour.
enum class Fill {
    None = 0,
    Solid = 1,
    LeftToRight = 25,
    RightToLeft = 27,
    TopToBottom = 28,
    BottomToTop = 30
};

struct Layer {
    Frame frame;
    Path outline;
    Fill fill = Fill::None;
    std::string color, color2;  ///< "#RRGGBB"; the second is a gradient's end.
    std::string line;           ///< Empty: no line.
    double weight = 0.8;        ///< Of the line, in thousandths of the page's shorter side.
    int dash = 1;               ///< Line pattern: 1 solid, 2 dashed, 3 dotted.
};

struct Background {
    std::string name;
    std::vector<Layer> layers;
};

/// A layer that fills its outline.
Layer Filled(Frame frame, Path outline, std::string color, Fill fill = Fill::Solid, std::string color2 = {});
/// A layer of lines alone.
Layer Drawn(Frame frame, Path outline, std::string color, double weight = 0.8, int dash = 1);
/// The whole page in one colour, or running from one at the top to one at the bottom.
Layer Wash(std::string top, std::string bottom = {});

}  // namespace norvelis::drawing::stencils
