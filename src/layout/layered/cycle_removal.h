#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// For each line, whether it must be turned around so that the graph has no cycle.
using Turned = std::vector<bool>;

/// One or two ways to break all cycles, with equally few lines turned. Lines from a box to itself are left
/// alone. Eades, Lin, Smyth: A fast and effective heuristic for the feedback arc set problem (1993), and a
/// depth-first walk that follows the order of the boxes; each followed by sifting of the order it finds.
std::vector<Turned> WaysToBreakCycles(const Graph& graph);

}  // namespace norvelis::layout
