#include "layout/layered/layering.h"
#include "layout/graph/graph.h"

#include <random>
#include <set>

#include "layout/layered/crossing_reduction.h"
#include "layout/layered/cycle_removal.h"
#include "layout/layered/ranking.h"

namespace norvelis::layout {

namespace {

/// The shortest rankings for each way to break cycles, then some where chance lines count more than others.
std::vector<std::vector<int>> Rankings(const Graph& graph) {
    constexpr int chanceRankings = 4, mostWeight = 3;
    const std::vector<Turned> ways = WaysToBreakCycles(graph);
    std::set<std::vector<int>> known;
    std::vector<std::vector<int>> rankings;
    const auto add = [&](const std::vector<Span>& spans) {
        std::vector<int> ranks = RanksOf(graph, spans);
        if (known.insert(ranks).second) rankings.push_back(std::move(ranks));
    };
    for (const Turned& way : ways) add(SpansOf(graph, way));
    std::mt19937 chance(7);
    for (int i = 0; i < chanceRankings; ++i) {
        std::vector<Span> spans = SpansOf(graph, ways[static_cast<std::size_t>(i) % ways.size()]);
        for (Span& span : spans) span.weight = 1 + static_cast<int>(chance() % mostWeight);
        add(spans);
    }
    return rankings;
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
    Layers layers = best;
    ReduceCrossings(layers, Effort::Full);
    return CountCrossings(layers) < fewest ? layers : best;
}

}  // namespace norvelis::layout
