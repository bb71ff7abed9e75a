#include "layout/layered/crossing_reduction.h"
#include "layout/graph/graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

#include "layout/layered/block_order.h"
#include "layout/layered/cycle_removal.h"
#include "layout/layered/ranking.h"
#include "layout/layered/start_orders.h"
#include "layout/routing/drawing_rules.h"

namespace norvelis::layout {
namespace {

Layers LayersOf(const Graph& graph) {
    return MakeLayers(graph, RanksOf(graph, SpansOf(graph, CycleBreaks(graph).front())));
}

/// By looking at every pair of edges.
std::int64_t CountSlowly(const Layers& layers) {
    std::vector<int> place(layers.nodes.size());
    for (const auto& layer : layers.order)
        for (std::size_t i = 0; i < layer.size(); ++i)
            place[static_cast<std::size_t>(layer[i])] = static_cast<int>(i);
    const auto at = [&](int node) { return place[static_cast<std::size_t>(node)]; };
    const auto layerOf = [&](const LayerEdge& edge) {
        return layers.nodes[static_cast<std::size_t>(edge.upper)].layer;
    };
    std::int64_t crossings = 0;
    for (const LayerEdge& a : layers.edges)
        for (const LayerEdge& b : layers.edges)
            if (layerOf(a) == layerOf(b) && at(a.upper) < at(b.upper) && at(a.lower) > at(b.lower))
                crossings += a.weight * b.weight;
    return crossings;
}

TEST(CrossingReduction, CountsAsOneWhoLooksAtEveryPair) {
    std::mt19937 random(3);
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        Layers layers = LayersOf(SchemaLike(60, 1.8, seed));
        for (auto& layer : layers.order) std::shuffle(layer.begin(), layer.end(), random);
        EXPECT_EQ(CountCrossings(layers), CountSlowly(layers));
    }
}

TEST(CrossingReduction, SiftingNeverAddsCrossings) {
    std::mt19937 random(4);
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        Layers layers = LayersOf(SchemaLike(50, 1.7, seed));
        BlockOrder blocks(layers);
        std::vector<int> order = blocks.Order();
        std::shuffle(order.begin(), order.end(), random);
        blocks.SetOrder(order);
        blocks.ApplyTo(layers);
        std::int64_t crossings = CountCrossings(layers);
        for (int round = 0; round < 5; ++round) {
            blocks.Sift(1, std::int64_t{1} << 40);
            blocks.ApplyTo(layers);
            EXPECT_LE(CountCrossings(layers), crossings);
            crossings = CountCrossings(layers);
        }
    }
}

TEST(CrossingReduction, DrawsTreesWithoutCrossings) {
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        Layers layers = LayersOf(SchemaLike(150, 0.5, seed));
        ReduceCrossings(layers, Effort::Full);
        EXPECT_EQ(CountCrossings(layers), 0);
    }
}

TEST(CrossingReduction, FindsTheLeastWhereItIsKnown) {
    // Zarankiewicz: on two layers each pair of owners crosses in each pair of members.
    Graph complete{std::vector<Box>(9, Box{2, 1}), {}};
    for (int owner = 0; owner < 4; ++owner)
        for (int member = 4; member < 9; ++member) complete.lines.push_back({owner, member, 0.8, 0.2});
    Layers layers = LayersOf(complete);
    ReduceCrossings(layers, Effort::Full);
    EXPECT_EQ(CountCrossings(layers), 6 * 10);

    // A ladder whose rungs are given in disorder is flat all the same.
    Graph ladder{std::vector<Box>(24, Box{2, 1}), {}};
    for (int i = 0; i + 2 < 24; ++i) ladder.lines.push_back({i * 7 % 24, (i + 2) * 7 % 24, 0.8, 0.2});
    for (int i = 0; i < 24; i += 2) ladder.lines.push_back({i * 7 % 24, (i + 1) * 7 % 24, 0.8, 0.2});
    layers = LayersOf(ladder);
    ReduceCrossings(layers, Effort::Full);
    EXPECT_EQ(CountCrossings(layers), 0);
}

TEST(CrossingReduction, LongLinesCrossNextToABoxOnly) {
    Layers layers = LayersOf(SchemaLike(120, 1.7, 5));
    ReduceCrossings(layers, Effort::Full);
    std::vector<int> place(layers.nodes.size());
    for (const auto& layer : layers.order)
        for (std::size_t i = 0; i < layer.size(); ++i)
            place[static_cast<std::size_t>(layer[i])] = static_cast<int>(i);
    const auto isPassing = [&](int node) { return layers.nodes[static_cast<std::size_t>(node)].bundle >= 0; };
    for (const LayerEdge& a : layers.edges) {
        if (!isPassing(a.upper) || !isPassing(a.lower)) continue;
        for (const LayerEdge& b : layers.edges) {
            if (!isPassing(b.upper) || !isPassing(b.lower)) continue;
            if (layers.nodes[static_cast<std::size_t>(a.upper)].layer !=
                layers.nodes[static_cast<std::size_t>(b.upper)].layer)
                continue;
            const auto at = [&](int node) { return place[static_cast<std::size_t>(node)]; };
            EXPECT_EQ(at(a.upper) < at(b.upper), at(a.lower) < at(b.lower));
        }
    }
}

TEST(StartOrders, KeepNeighboursTogether) {
    // Two clusters joined by one line, their boxes interleaved.
    Graph graph{std::vector<Box>(20, Box{2, 1}), {}};
    for (int i = 2; i < 20; ++i) graph.lines.push_back({i % 2, i, 0.8, 0.2});
    for (int i = 2; i + 2 < 20; ++i) graph.lines.push_back({i, i + 2, 0.8, 0.2});
    graph.lines.push_back({0, 19, 0.8, 0.2});
    const Layers layers = LayersOf(graph);
    const BlockOrder blocks(layers);
    std::mt19937 random(1);
    std::vector<int> side;
    for (const int block : SpectralOrder(blocks, 400, random))
        if (block < 20) side.push_back(block % 2);
    const auto changes = std::inner_product(side.begin() + 1, side.end(), side.begin(), 0, std::plus<>(),
                                            [](int a, int b) { return a != b ? 1 : 0; });
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(BreadthFirstOrder(blocks, 7).front(), 7);
    std::vector<int> walk = DepthFirstOrder(blocks, 3);
    std::sort(walk.begin(), walk.end());
    for (int i = 0; i < blocks.Size(); ++i) EXPECT_EQ(walk[static_cast<std::size_t>(i)], i);
}

}  // namespace
}  // namespace norvelis::layout
