#pragma once

#include "layout/former/former_places.h"
#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// How much of a page a graph takes. Where others are on it as well, a band is no harm: they are packed
/// around.
enum class PageShare { Most, Part };

/// Layered placement and routing of a connected graph, owners above their members (place style 2: left of
/// them), in the phases of Sugiyama, Tagawa, Toda: Methods for visual understanding of hierarchical system
/// structures (1981): cycles are broken (cycle_removal.h), boxes ranked (ranking.h), long lines given a place
/// on every layer that they pass (layers.h), layers ordered for few crossings (crossing_reduction.h), every
/// line and label given a place of its own (grid.h), places given coordinates (coordinates.h), and the
/// horizontal segments of lines given tracks in the channels between the rows (channels.h). No line crosses a
/// box or another line's label. From 30 boxes on pages are made like paper: wide layers are split
/// (layer_splitting.h), and where a graph is so deep that most of the page would be a band, more lines are
/// reversed (depth_limit.h).
///
/// With places of a drawing of before, its layers are taken instead, and their order (former_layers.h).
Placement PlaceLayered(const Graph& graph, const Style& style, PageShare share,
                       const FormerPlaces& former = {});

}  // namespace norvelis::layout
