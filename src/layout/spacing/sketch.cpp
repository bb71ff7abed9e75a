#include "layout/spacing/sketch.h"
#include "layout/graph/graph.h"

#include <utility>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

Rect PageOf(const Sketch& sketch) {
    Rect page = BoundsOf(sketch.boxes);
    for (const auto& way : sketch.ways)
        for (const Point& p : way)
            page = {std::min(page.x0, p.x), std::min(page.y0, p.y), std::max(page.x1, p.x),
                    std::max(page.y1, p.y)};
    return page;
}

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
