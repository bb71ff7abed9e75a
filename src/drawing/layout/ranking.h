#pragma once

#include <vector>

#include "drawing/layout/graph.h"

namespace norvelis::layout {

/// The rank of each box, 0 at the top, so that all lines lead at least one rank down (those of `against` up) and are as
/// short as can be in all. Boxes that could stand on several ranks at the same cost go to the least crowded one.
/// Gansner, Koutsofios, North, Vo: A technique for drawing directed graphs (1993), optimal rank assignment.
std::vector<int> RanksOf(const Graph& graph, const std::vector<bool>& against);

}  // namespace norvelis::layout
