#pragma once

#include <vector>

#include "drawing/layout/graph.h"

namespace norvelis::layout {

/// For each line, whether it must be turned around so that the graph has no cycle; few are. Lines from a box
/// to itself are left alone. Eades, Lin, Smyth: A fast and effective heuristic for the feedback arc set
/// problem (1993), followed by sifting of the order it finds.
std::vector<bool> LinesAgainstTheFlow(const Graph& graph);

}  // namespace norvelis::layout
