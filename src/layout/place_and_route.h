#pragma once

#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// Places all boxes and routes all lines, every component of the graph beside the others. The one entry to
/// this module.
Placement PlaceAndRoute(const Graph& graph, const Style& style);

}  // namespace norvelis::layout
