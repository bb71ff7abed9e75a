#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Boxes that one line joins to their hub and nothing to any other box.
struct LeafGroup {
    int hub = 0;
    bool above = false;       ///< The leaves own the hub, which so lies under them.
    std::vector<int> leaves;  ///< In the order of their lines.
    std::vector<int> lines;   ///< One for each leaf.
};

/// All groups of at least `least` leaves. With `byDirection` leaves that own their hub and leaves that it
/// owns are in groups of their own.
std::vector<LeafGroup> LeafGroupsOf(const Graph& graph, std::size_t least, bool byDirection);

}  // namespace norvelis::layout
