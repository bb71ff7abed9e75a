#pragma once

#include "layout/former/former_places.h"
#include "layout/graph/graph.h"
#include "layout/layered/layers.h"

namespace norvelis::layout {

/// The layers of the drawing of before, y of its places growing downwards: its rows, in each the order from
/// left to right of boxes and of lines passing. What a new line joins for the first time slides along the
/// other, so that owners are above their members but where a cycle closes. A new box gets a place like that,
/// where need be in a row of its own, and in the row, like a new line, the place where its lines cross least.
Layers LayersAsBefore(const Graph& graph, const FormerPlaces& former);

}  // namespace norvelis::layout
