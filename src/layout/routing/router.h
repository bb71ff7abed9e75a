#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Routes lines and places labels for boxes that stand already, by `routeStyle` and `lineRouteExt`. No line
/// runs through a box that it does not join and no label covers a box or another label, provided that the
/// boxes themselves do not overlap; where the style's way is barred, a line bends around the boxes. Each line
/// meets a box at a point of its own; lines of a tree or organisation chart share their owner's.
std::vector<Route> RouteLines(const Graph& graph, const std::vector<Point>& centers, const Style& style);

/// The same, and boxes give way until lines and labels have the room they need.
Placement RouteMakingRoom(const Graph& graph, std::vector<Point> centers, const Style& style);

}  // namespace norvelis::layout
