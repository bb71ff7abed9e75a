#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// All lines between one pair of boxes: they pass the layers side by side as one strand.
struct Bundle {
    int upper = 0, lower = 0;  ///< Boxes.
    std::vector<int> lines;
    std::vector<int> chain;  ///< Its nodes on the layers strictly between its boxes, from above.
};

/// A place on a layer: a box or a bundle passing.
struct LayerNode {
    int layer = 0;
    int bundle = -1;  ///< -1 for a box; the first nodes are the graph's boxes.
    /// Bundles keep their order from layer to layer where both have kept their sections; -1 for a box.
    int section = -1;
    bool operator==(const LayerNode&) const = default;
};

/// A bundle's segment from one layer to the next.
struct LayerEdge {
    int upper = 0, lower = 0;  ///< Nodes.
    int weight = 1;            ///< Lines of the bundle.
};

/// A proper layering: every edge joins neighbouring layers.
struct Layers {
    std::vector<LayerNode> nodes;
    std::vector<LayerEdge> edges;
    std::vector<Bundle> bundles;
    std::vector<std::vector<int>> order;  ///< For each layer its nodes from left to right.
};

/// The edges along the chains of all bundles.
void AddEdges(Layers& layers);

/// Lines from a box to itself belong to no bundle.
Layers MakeLayers(const Graph& graph, const std::vector<int>& ranks);

}  // namespace norvelis::layout
