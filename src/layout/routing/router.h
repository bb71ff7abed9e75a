#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// Whether boxes with more space than lines and labels need move together, or stay where they are and only
/// make space.
enum class Draws { Together, Apart };

/// Routes lines and places labels by `routeStyle` and `lineRouteExt` for boxes at the given centers, and
/// moves the boxes apart until lines and labels have the space they need. No line runs through a box that it
/// does not join and no label covers a box or another label, provided that the boxes do not overlap at the
/// start; where the style's own path is barred, a line bends around the boxes. Each line meets a box at a
/// point of its own; lines of a tree or organisation chart share their owner's.
Placement RouteMakingSpace(const Graph& graph, std::vector<Point> centers, const Style& style,
                           Draws draws = Draws::Together);

}  // namespace norvelis::layout
