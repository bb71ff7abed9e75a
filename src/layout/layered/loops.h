#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/style.h"

// Lines from a box to itself.
namespace norvelis::layout {

/// Their numbers, for each box.
std::vector<std::vector<int>> LoopsOf(const Graph& graph);

/// Space that they need right of their box.
double LoopSpace(const Graph& graph, const std::vector<int>& loops, const Style& style);

/// They leave and come back on the right side of their box, one outside the other, labels on their vertical
/// segments.
void RouteLoops(const Graph& graph, const Style& style, Placement& placement);

}  // namespace norvelis::layout
