#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/layered/cycle_removal.h"

namespace norvelis::layout {

/// The lines to reverse so that no cycle is left and boxes, now on `ranks`, need about `mostRanks` of them:
/// such that stay short, and few, as a reversed line counts as much as `costOfReversed` ranks of length.
/// Trees that hang on the rest keep their direction. For graphs so deep that their page would be a band.
Reversed ReversedForDepth(const Graph& graph, const std::vector<int>& ranks, int mostRanks,
                          int costOfReversed);

}  // namespace norvelis::layout
