#pragma once

#include <vector>

#include "base/geometry.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// The paths of all lines, before their corners are rounded and their labels placed.
struct LinePaths {
    std::vector<std::vector<Point>> points;
    int crowded = 0;  ///< Segments that are closer to others than the line gap.
};

/// The order in which lines are routed: short ones, which have the least choice, first.
std::vector<int> ShortLinesFirst(const std::vector<Rect>& boxes, const std::vector<Line>& lines);

}  // namespace norvelis::layout
