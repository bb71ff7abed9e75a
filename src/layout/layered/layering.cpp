#include "layout/layered/layering.h"

#include <algorithm>
#include <random>
#include <set>

#include "layout/graph/graph.h"
#include "layout/layered/crossing_reduction.h"
#include "layout/layered/cycle_removal.h"
#include "layout/layered/depth_limit.h"
#include "layout/layered/ranking.h"

namespace norvelis::layout {

namespace {

/// The shortest rankings for each choice of reversed lines, then some where random lines count more than
/// others.
std::vector<std::vector<int>> Rankings(const Graph& graph) {
    constexpr int kRandomRankings = 6, kMostWeight = 3;
    const std::vector<Reversed> breaks = CycleBreaks(graph);
    std::set<std::vector<int>> known;
    std::vector<std::vector<int>> rankings;
    const auto add = [&](const std::vector<Span>& spans) {
        std::vector<int> ranks = RanksOf(graph, spans);
        if (known.insert(ranks).second) rankings.push_back(std::move(ranks));
    };
    for (const Reversed& choice : breaks) add(SpansOf(graph, choice));
    std::mt19937 random(7);
    for (int i = 0; i < kRandomRankings; ++i) {
        std::vector<Span> spans = SpansOf(graph, breaks[static_cast<std::size_t>(i) % breaks.size()]);
        for (Span& span : spans) span.weight = 1 + static_cast<int>(random() % kMostWeight);
        add(spans);
    }
    return rankings;
}

/// What came out best of trials, ordered with full effort.
Layers WithFullEffort(const Layers& best, std::int64_t crossings) {
    Layers layers = best;
    ReduceCrossings(layers, Effort::Full);
    return CountCrossings(layers) < crossings ? layers : best;
}

}  // namespace

Layers LayersWithFewCrossings(const Graph& graph) {
    Layers best;
    std::int64_t fewest = -1;
    for (const std::vector<int>& ranks : Rankings(graph)) {
        Layers layers = MakeLayers(graph, ranks);
        ReduceCrossings(layers, Effort::Trial);
        const std::int64_t crossings = CountCrossings(layers);
        if (fewest >= 0 && crossings >= fewest) continue;
        fewest = crossings;
        best = std::move(layers);
        if (fewest == 0) return best;
    }
    return WithFullEffort(best, fewest);
}

Layers ShallowLayers(const Graph& graph, const Layers& deep, int most) {
    constexpr int kCostsOfReversed[] = {2, 3, 4, 6, 8, 12, 16};
    std::vector<int> ranks;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) ranks.push_back(deep.nodes[i].layer);
    std::set<std::vector<int>> known;
    Layers best;
    std::int64_t fewest = -1;
    for (const int wished : {most, most - 1}) {
        for (const int cost : kCostsOfReversed) {
            const Reversed reversed = ReversedForDepth(graph, ranks, std::max(1, wished), cost);
            const std::vector<int> shallow = RanksOf(graph, SpansOf(graph, reversed));
            if (!known.insert(shallow).second) continue;
            Layers layers = MakeLayers(graph, shallow);
            const std::size_t depth = layers.order.size(), wanted = static_cast<std::size_t>(most);
            if (fewest >= 0 && depth > std::max(best.order.size(), wanted)) continue;
            ReduceCrossings(layers, Effort::Trial);
            const std::int64_t crossings = CountCrossings(layers);
            const bool bestIsTooDeep = best.order.size() > std::max(depth, wanted);
            if (fewest >= 0 && crossings >= fewest && !bestIsTooDeep) continue;
            fewest = crossings;
            best = std::move(layers);
        }
    }
    return WithFullEffort(best, fewest);
}

}  // namespace norvelis::layout
