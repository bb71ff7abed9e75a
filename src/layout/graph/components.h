#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// One connected part of a graph as a graph of its own. Boxes and lines keep their order.
struct Component {
    Graph graph;
    std::vector<int> boxes;  ///< For each box of the part, its number in the whole graph.
    std::vector<int> lines;  ///< For each line, likewise.
};

/// The connected components, in the order of their first boxes. Lines to boxes that are not there are left
/// out.
std::vector<Component> ComponentsOf(const Graph& graph);

}  // namespace norvelis::layout
