#include "layout/layered/layers.h"

#include <algorithm>
#include <map>

namespace norvelis::layout {

void AddEdges(Layers& layers) {
    for (const Bundle& bundle : layers.bundles) {
        const int weight = static_cast<int>(bundle.lines.size());
        int last = bundle.upper;
        for (const int node : bundle.chain) {
            layers.edges.push_back({last, node, weight});
            last = node;
        }
        layers.edges.push_back({last, bundle.lower, weight});
    }
}

Layers MakeLayers(const Graph& graph, const std::vector<int>& ranks) {
    Layers layers;
    layers.order.resize(ranks.empty() ? 0 : *std::max_element(ranks.begin(), ranks.end()) + 1);
    const auto addNode = [&](int layer, int bundle) {
        const int node = static_cast<int>(layers.nodes.size());
        layers.nodes.push_back({layer, bundle, bundle});
        layers.order[layer].push_back(node);
        return node;
    };
    for (const int rank : ranks) addNode(rank, -1);

    std::map<std::pair<int, int>, int> bundleOf;
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        if (line.from == line.to) continue;
        auto ends = std::pair(line.from, line.to);
        if (ranks[ends.first] > ranks[ends.second]) std::swap(ends.first, ends.second);
        const auto [at, isNew] = bundleOf.try_emplace(ends, static_cast<int>(layers.bundles.size()));
        if (isNew) layers.bundles.push_back({ends.first, ends.second, {}, {}});
        layers.bundles[at->second].lines.push_back(static_cast<int>(k));
    }
    for (std::size_t b = 0; b < layers.bundles.size(); ++b) {
        Bundle& bundle = layers.bundles[b];
        // Those of a trunk are side by side.
        std::stable_partition(bundle.lines.begin(), bundle.lines.end(), [&](int line) {
            return graph.lines[static_cast<std::size_t>(line)].from == bundle.upper;
        });
        for (int layer = ranks[bundle.upper] + 1; layer < ranks[bundle.lower]; ++layer)
            bundle.chain.push_back(addNode(layer, static_cast<int>(b)));
    }
    AddEdges(layers);
    return layers;
}

}  // namespace norvelis::layout
