#pragma once

#include <vector>

#include "layout/former/former_places.h"
#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// The centers of the drawing of before; each new box goes to the free place that is nearest to the boxes at
/// the other ends of its lines. No two boxes come closer than the style's gaps.
std::vector<Point> CentersAsBefore(const Graph& graph, const Style& style, const FormerPlaces& former);

}  // namespace norvelis::layout
