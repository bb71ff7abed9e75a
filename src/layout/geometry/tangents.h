#pragma once

#include <vector>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

/// Taut paths from the middle of one box to that of another past each box that is between them on either
/// side, the shortest few, with `clearance` at the corners. None where boxes are too densely for that.
std::vector<std::vector<Point>> TautPaths(const std::vector<Rect>& boxes, const Obstacles& obstacles,
                                          int from, int to, double clearance);

}  // namespace norvelis::layout
