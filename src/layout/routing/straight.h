#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/route_rule.h"
#include "layout/routing/line_paths.h"

namespace norvelis::layout {

/// Straight lines from middle to middle; where boxes are between, the shortest path around them within a
/// corridor of the free space, found by the funnel algorithm (Lee, Preparata: Euclidean shortest paths in the
/// presence of rectilinear barriers, 1984). Parallel lines of one pair run side by side; the points where
/// lines meet a box are spread.
LinePaths RouteStraight(const std::vector<Rect>& boxes, const std::vector<Line>& lines, double lineGap);

}  // namespace norvelis::layout
