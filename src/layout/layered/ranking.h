#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// A line as ranking sees it, lines against the flow reversed.
struct Span {
    int upper = 0, lower = 0;
    int weight = 1;  ///< How much it counts that it is short.
};

/// All lines but those from a box to itself.
std::vector<Span> SpansOf(const Graph& graph, const std::vector<bool>& reversed);

/// The rank of each box, 0 at the top, so that all spans have their least length and are as short as can be
/// in all. Boxes that could be on several ranks at the same cost go to the least crowded one. Gansner,
/// Koutsofios, North, Vo: A technique for drawing directed graphs (1993), optimal rank assignment.
std::vector<int> RanksOf(const Graph& graph, const std::vector<Span>& spans);

}  // namespace norvelis::layout
