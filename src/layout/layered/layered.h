#pragma once

#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// Layered placement and routing of a connected graph, owners above their members (place style 2: left of
/// them), in the phases of Sugiyama, Tagawa, Toda: Methods for visual understanding of hierarchical system
/// structures (1981): cycles are broken (cycle_removal.h), boxes ranked (ranking.h), long lines given a place
/// on every layer that they pass (layers.h), layers ordered for few crossings (crossing_reduction.h), every
/// line and label given a place of its own (grid.h), places given coordinates (coordinates.h), and the
/// horizontal segments of lines given tracks in the channels between the rows (channels.h). No line crosses a
/// box or another line's label.
Placement PlaceLayered(const Graph& graph, const Style& style);

}  // namespace norvelis::layout
