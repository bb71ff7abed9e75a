#pragma once

#include "layout/former/former_places.h"
#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// Places all boxes and routes all lines, every component of the graph beside the others. The one entry to
/// this module. Boxes with a place of before keep their order and neighbourhood; a component that is new for
/// the most part is placed without regard to them.
Placement PlaceAndRoute(const Graph& graph, const Style& style, const FormerPlaces& former = {});

}  // namespace norvelis::layout
