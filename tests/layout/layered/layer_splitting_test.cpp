#include "layout/layered/layer_splitting.h"

#include <gtest/gtest.h>

#include "layout/layered/crossing_reduction.h"
#include "layout/layered/layering.h"
#include "layout/routing/drawing_rules.h"

namespace norvelis::layout {
namespace {

TEST(LayerSplitter, AddsNoCrossingAndKeepsOwnersAboveMembers) {
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        const Graph graph = SchemaLike(70, 1.3, seed);
        const Layers layers = LayersWithFewCrossings(graph);
        const LayerSplitter splitter(graph, layers, Style{});
        const LayerSplitter::Plan plan = splitter.PlanFor(kPaperRatio, {1, 1});
        const Layers split = splitter.Split(plan);
        EXPECT_GT(split.order.size(), layers.order.size());
        EXPECT_LE(CountCrossings(split), CountCrossings(layers)) << "seed " << seed;
        for (const LayerEdge& edge : split.edges)
            EXPECT_EQ(split.nodes[static_cast<std::size_t>(edge.upper)].layer + 1,
                      split.nodes[static_cast<std::size_t>(edge.lower)].layer);
        for (std::size_t i = 0; i < split.bundles.size(); ++i) {
            EXPECT_EQ(split.bundles[i].upper, layers.bundles[i].upper);
            EXPECT_EQ(split.bundles[i].lines, layers.bundles[i].lines);
        }
    }
}

TEST(LayerSplitter, PlansThePageThatPaperWants) {
    Graph graph{std::vector<Box>(61, Box{2, 1}), {}};
    for (int i = 1; i < 61; ++i) graph.lines.push_back({(i - 1) % 10 / 9, i, 0.8, 0.2});
    const Layers layers = LayersWithFewCrossings(graph);
    const LayerSplitter splitter(graph, layers, Style{});
    for (const double ratio : {0.5, 1.0, kPaperRatio}) {
        const LayerSplitter::Plan plan = splitter.PlanFor(ratio, {1, 1});
        EXPECT_NEAR(plan.width / plan.height, ratio, 0.4 * ratio);
    }
    // Pages that come out twice as high as expected are planned flatter.
    EXPECT_LT(splitter.PlanFor(1, {1, 2}).height, splitter.PlanFor(1, {1, 1}).height);
}

}  // namespace
}  // namespace norvelis::layout
