#include "layout/spacing/sketch.h"
#include "layout/graph/graph.h"

#include <utility>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

Rect PageOf(const Sketch& sketch) {
    Rect page = BoundsOf(sketch.boxes);
    for (const auto& path : sketch.paths)
        for (const Point& p : path)
            page = {std::min(page.x0, p.x), std::min(page.y0, p.y), std::max(page.x1, p.x),
                    std::max(page.y1, p.y)};
    return page;
}

void Transpose(Sketch& sketch) {
    for (Rect& box : sketch.boxes) box = {box.y0, box.x0, box.y1, box.x1};
    for (Line& line : sketch.lines) std::swap(line.labelWidth, line.labelHeight);
    for (auto& path : sketch.paths)
        for (Point& point : path) std::swap(point.x, point.y);
    for (FirstSegment& first : sketch.firstSegments)
        if (first != FirstSegment::Slanting)
            first = first == FirstSegment::Horizontal ? FirstSegment::Vertical : FirstSegment::Horizontal;
}

}  // namespace norvelis::layout
