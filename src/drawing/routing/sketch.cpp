#include "drawing/routing/sketch.h"

#include <utility>

namespace norvelis::layout {

void Transpose(Sketch& sketch) {
    for (Rect& box : sketch.boxes) box = {box.y0, box.x0, box.y1, box.x1};
    for (Line& line : sketch.lines) std::swap(line.labelWidth, line.labelHeight);
    for (auto& way : sketch.ways)
        for (Point& point : way) std::swap(point.x, point.y);
    for (FirstPiece& first : sketch.firstPieces)
        if (first != FirstPiece::Slanting)
            first = first == FirstPiece::Level ? FirstPiece::Upright : FirstPiece::Level;
}

}  // namespace norvelis::layout
