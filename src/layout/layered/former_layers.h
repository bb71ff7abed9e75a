#pragma once

#include "layout/former/former_places.h"
#include "layout/graph/graph.h"
#include "layout/layered/layers.h"

namespace norvelis::layout {

/// The layers of the drawing of before, y of its places growing downwards: its rows, in each the order from
/// left to right of boxes and of lines passing. A new box gets a row below its owners or above its members,
/// where need be one of its own, and there, like a new line, the place where its lines cross least.
Layers LayersAsBefore(const Graph& graph, const FormerPlaces& former);

}  // namespace norvelis::layout
