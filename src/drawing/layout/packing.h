#pragma once

#include <vector>

#include "drawing/layout/graph.h"

namespace norvelis::layout {

/// Where rectangles stand on a common page: lower left corners, no two closer than `gap`. They stand on
/// shelves, the highest first, on the page width that wastes least while the page stays no wider than 2.5
/// times its height and no higher than 1.25 times its width where that can be had. Coffman, Garey, Johnson,
/// Tarjan: Performance bounds for level-oriented two-dimensional packing (1980), first fit decreasing height.
std::vector<Point> PackSideBySide(const std::vector<Box>& sizes, double gap);

}  // namespace norvelis::layout
