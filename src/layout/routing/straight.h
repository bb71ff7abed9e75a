#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/routing/candidate_paths.h"
#include "layout/routing/route_style.h"

namespace norvelis::layout {

/// Straight lines from middle to middle; where boxes stand between, the shortest way around them within a
/// corridor of the free space, found by the funnel algorithm (Lee, Preparata: Euclidean shortest paths in the
/// presence of rectilinear barriers, 1984). Parallel lines of one pair run side by side; the points where
/// lines meet a box are spread.
Ways RouteStraight(const std::vector<Rect>& boxes, const std::vector<Line>& lines, double lineGap);

}  // namespace norvelis::layout
