#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/style.h"
#include "layout/layered/coordinates.h"
#include "layout/layered/grid.h"

namespace norvelis::layout {

/// Stacks the rows with channels between them that are as high as their tracks need (channels.h) and leads
/// every line through its places. Lines from a box to itself get no route. y grows downwards.
Placement RouteThroughChannels(const Graph& graph, const Style& style, const std::vector<bool>& trunks,
                               const Grid& grid, const std::vector<Ports>& ports);

}  // namespace norvelis::layout
