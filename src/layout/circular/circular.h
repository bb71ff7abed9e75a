#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// Circular placement: each biconnected component on an ellipse of its own, ordered for few crossings; the
/// components share their cut vertices and hang around the greatest of them as a tree, none over another. No
/// two boxes come closer than the style's gaps.
///
/// Six, Tollis: A framework for user-grouped circular drawings (2003), for the tree of blocks; Baur, Brandes:
/// Crossing reduction in circular layouts (2004), for the order and its sifting.
///
/// The graph should be connected.
std::vector<Point> PlaceCircular(const Graph& graph, const Style& style);

}  // namespace norvelis::layout
