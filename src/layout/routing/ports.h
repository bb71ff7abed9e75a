#pragma once

#include <vector>

#include "base/geometry.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Moves the points where lines meet a side of a box apart from each other, in their order, as far as the
/// side and what is in the way allow.
void SpreadPorts(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
                 const std::vector<Rect>& boxes, double lineGap);

}  // namespace norvelis::layout
