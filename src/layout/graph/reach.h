#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

using Neighbours = std::vector<std::vector<int>>;

/// The boxes at the other ends of each box's lines, in either direction; parallel lines count each, loops not
/// at all.
Neighbours NeighboursOf(const Graph& graph);

/// The box with the most reach: the nearer it is to the others, along sets in either direction, the more they
/// count (harmonic centrality: Marchiori, Latora: Harmony in the small-world, 2000). The first of equals.
int MostReach(const Neighbours& neighbours);

}  // namespace norvelis::layout
