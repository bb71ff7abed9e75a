#pragma once

#include <vector>

#include "layout/geometry/obstacles.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Lines from a box to itself, each around a corner that nothing bars, several around one corner
/// outside each other, long enough for their labels. Empty where no corner is free. `lines`: those of one
/// box.
std::vector<std::vector<Point>> LoopsAroundCorners(const Rect& box, const std::vector<Line>& lines,
                                                   const Obstacles& obstacles, double lineGap);

}  // namespace norvelis::layout
