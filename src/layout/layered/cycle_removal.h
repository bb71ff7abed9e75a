#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// For each line, whether it must be reversed so that the graph has no cycle.
using Reversed = std::vector<bool>;

/// One or two choices of lines whose reversal breaks all cycles, each with the fewest found. Lines from a box
/// to itself are left alone. Eades, Lin, Smyth: A fast and effective heuristic for the feedback arc set
/// problem (1993), and a depth-first walk that follows the order of the boxes; each followed by sifting of
/// the order it finds.
std::vector<Reversed> CycleBreaks(const Graph& graph);

}  // namespace norvelis::layout
