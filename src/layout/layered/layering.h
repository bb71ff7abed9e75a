#pragma once

#include "layout/graph/graph.h"
#include "layout/layered/layers.h"

namespace norvelis::layout {

/// Layers with few crossings. How boxes are ranked decides how few there can be, so several rankings are
/// tried, all with the fewest lines reversed and lines about as short as can be (cycle_removal.h,
/// ranking.h), and the one whose crossings come out fewest is taken (crossing_reduction.h).
Layers LayersWithFewCrossings(const Graph& graph);

/// The graph of these layers on about `most` layers, for which more lines are reversed (depth_limit.h).
Layers ShallowLayers(const Graph& graph, const Layers& deep, int most);

}  // namespace norvelis::layout
