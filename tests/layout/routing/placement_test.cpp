#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "layout/circular/circle_order.h"
#include "layout/circular/circular.h"
#include "layout/graph/biconnected.h"
#include "layout/graph/eigenvectors.h"
#include "layout/graph/graph.h"
#include "layout/graph/reach.h"
#include "layout/graph/style.h"
#include "layout/radial/radial.h"
#include "layout/rings/ring.h"
#include "layout/routing/drawing_rules.h"
#include "layout/spacing/spacing.h"

namespace norvelis::layout {
namespace {

TEST(BiconnectedComponents, SplitsAtCutVertices) {
    // A triangle 0 1 2, a bridge 2-3, a square 3 4 5 6, a lone vertex 7; the edge 0-1 is there twice.
    const std::vector<std::vector<int>> neighbours{{1, 1, 2}, {0, 0, 2}, {0, 1, 3}, {2, 4, 6},
                                                   {3, 5},    {4, 6},    {5, 3},    {}};
    std::vector<std::vector<int>> components = BiconnectedComponents(neighbours);
    for (auto& component : components) std::sort(component.begin(), component.end());
    std::sort(components.begin(), components.end());
    EXPECT_EQ(components, (std::vector<std::vector<int>>{{0, 1, 2}, {2, 3}, {3, 4, 5, 6}}));
}

TEST(CircleOrder, CountsCrossingChordsButNotThoseThatShareAnEnd) {
    EXPECT_EQ(CrossingsOnCircle({0, 1, 2, 3}, {{0, 2}, {1, 3}, {0, 1}, {2, 3}}), 1);
    EXPECT_EQ(CrossingsOnCircle({0, 2, 1, 3}, {{0, 2}, {1, 3}, {0, 1}, {2, 3}}), 1);
    EXPECT_EQ(CrossingsOnCircle({0, 1, 2, 3, 4}, {{0, 2}, {0, 3}, {2, 4}, {1, 1}}), 1);
}

TEST(SpectralPlaces, TurnAroundARing) {
    std::vector<std::vector<int>> ring;
    for (int i = 0; i < 12; ++i) ring.push_back({(i + 1) % 12, (i + 11) % 12});
    const std::vector<Point> places = SpectralPlaces(ring);
    const auto turnsLeft = [&](std::size_t i) { return Cross(places[i], places[(i + 1) % 12]) > 0; };
    for (std::size_t i = 1; i < 12; ++i) EXPECT_EQ(turnsLeft(i), turnsLeft(0));
}

TEST(CircleOrder, DrawsOuterplanarGraphsWithoutCrossings) {
    // A ring of twelve under scrambled numbers, with chords that share ends.
    const auto name = [](int i) { return i * 5 % 12; };
    std::vector<std::pair<int, int>> edges;
    for (int i = 0; i < 12; ++i) edges.emplace_back(name(i), name((i + 1) % 12));
    for (const int end : {2, 4, 7, 10}) edges.emplace_back(name(0), name(end));
    EXPECT_EQ(CrossingsOnCircle(CircleOrder(12, edges), edges), 0);
}

TEST(CircleOrder, IsNearTheLeastForTheCompleteBipartiteGraph) {
    std::vector<std::pair<int, int>> edges;
    for (int a = 0; a < 4; ++a)
        for (int b = 4; b < 8; ++b) edges.emplace_back(a, b);
    std::vector<int> order = CircleOrder(8, edges);
    EXPECT_LE(CrossingsOnCircle(order, edges), 18);
    std::sort(order.begin(), order.end());
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
}

/// Box 0 owns 1 to 6, each of which owns two more.
Graph TwoRings() {
    Graph graph{std::vector<Box>(19, Box{3, 1}), {}};
    for (int i = 1; i <= 6; ++i) graph.lines.push_back({0, i, 0.9, 0.2});
    for (int i = 7; i < 19; ++i) graph.lines.push_back({(i - 7) / 2 + 1, i, 0.9, 0.2});
    return graph;
}

TEST(Reach, NearBoxesCountMoreAndOfEqualsTheFirstIsTaken) {
    const auto mostReach = [](int boxes, const std::vector<std::pair<int, int>>& lines) {
        Graph graph{std::vector<Box>(static_cast<std::size_t>(boxes), Box{1, 1}), {}};
        for (const auto& [from, to] : lines) graph.lines.push_back({from, to, 0, 0});
        return MostReach(NeighboursOf(graph));
    };
    EXPECT_EQ(mostReach(4, {{0, 1}, {1, 2}, {2, 3}, {3, 0}}), 0) << "all of a ring are equal";
    EXPECT_EQ(mostReach(4, {{0, 1}, {1, 2}, {2, 3}}), 1) << "two in the middle of a chain";
    EXPECT_EQ(mostReach(5, {{4, 3}, {3, 2}, {2, 1}, {1, 0}}), 2) << "in either direction of the lines";
    // 1 joins two ends at two steps; 4 has as many boxes in reach, but three of them next to it.
    EXPECT_EQ(mostReach(7, {{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}, {4, 6}}), 4);
}

TEST(Radial, PutsTheMostReachInTheMiddleAndTheOthersOnRingsAround) {
    const Graph graph = TwoRings();
    EXPECT_EQ(MostReach(NeighboursOf(graph)), 0);
    Style style;
    style.placeStyle = PlaceStyle::Radial;
    const std::vector<Point> centers = PlaceRadial(graph, style);
    EXPECT_NEAR(std::hypot(centers[0].x, centers[0].y), 0, 1.0);
    for (std::size_t member = 7; member < 19; ++member) {
        const Point inner = centers[(member - 7) / 2 + 1], outer = centers[member];
        EXPECT_GT(outer.x * outer.x + outer.y * outer.y, inner.x * inner.x + inner.y * inner.y);
        EXPECT_GT(outer.x * inner.x + outer.y * inner.y, 0) << "in its owner's sector";
    }
}

TEST(Radial, RingsFollowTheDistanceFromTheMiddle) {
    const Graph graph = SchemaLike(80, 1.4, 21);
    const Neighbours neighbours = NeighboursOf(graph);
    const int middle = MostReach(neighbours);
    std::vector<int> distance(80, -1), walk{middle};
    distance[static_cast<std::size_t>(middle)] = 0;
    for (std::size_t k = 0; k < walk.size(); ++k) {
        for (const int other : neighbours[static_cast<std::size_t>(walk[k])]) {
            int& known = distance[static_cast<std::size_t>(other)];
            if (known >= 0) continue;
            known = distance[static_cast<std::size_t>(walk[k])] + 1;
            walk.push_back(other);
        }
    }
    Style style;
    style.placeStyle = PlaceStyle::Radial;
    const std::vector<Point> centers = PlaceRadial(graph, style);
    const Point origin = centers[static_cast<std::size_t>(middle)];
    const auto reach = [&](std::size_t box) {  // rings are twice as wide as they are high
        return std::hypot((centers[box].x - origin.x) / 2, centers[box].y - origin.y);
    };
    int right = 0, all = 0;
    for (std::size_t i = 0; i < 80; ++i) {
        for (std::size_t k = 0; k < 80; ++k) {
            if (distance[i] >= distance[k]) continue;
            ++all;
            right += reach(i) < reach(k);
        }
    }
    EXPECT_GE(right, all * 9 / 10);
}

TEST(Radial, DepthSetsHowTightTheRingsAre) {
    const auto width = [](PlaceDepth depth) {
        Style style;
        style.placeStyle = PlaceStyle::Radial;
        style.placeDepth = depth;
        double most = 0;
        for (const Point& center : PlaceRadial(TwoRings(), style)) most = std::max(most, center.x);
        return most;
    };
    EXPECT_LT(width(PlaceDepth::Deep), width(PlaceDepth::Medium));
    EXPECT_LT(width(PlaceDepth::Medium), width(PlaceDepth::Shallow));
}

TEST(Circular, PutsABlockOnACircleAndWhatHangsOnItOutside) {
    Graph graph{std::vector<Box>(9, Box{3, 1}), {}};
    for (int i = 0; i < 8; ++i) graph.lines.push_back({i, (i + 1) % 8, 0.9, 0.2});
    graph.lines.push_back({3, 8, 0.9, 0.2});
    Style style;
    style.placeStyle = PlaceStyle::Circular;
    const std::vector<Point> centers = PlaceCircular(graph, style);
    Point middle{};
    for (std::size_t i = 0; i < 8; ++i) middle = {middle.x + centers[i].x / 8, middle.y + centers[i].y / 8};
    const auto apart = [](Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y); };
    EXPECT_GT(apart(centers[8], middle), apart(centers[3], middle));
    for (const std::size_t i : {0, 1, 5, 6, 7})
        EXPECT_LT(apart(centers[8], centers[3]), apart(centers[8], centers[i]));
}

TEST(Ring, TurnsKeepTheirDistancesAroundTheCircle) {
    const std::vector<double> distance(4, 0.2);
    const std::vector<double> crowded = SeparateAround({0.02, 0.04, 0.5, 0.98}, distance);
    for (std::size_t i = 1; i < 4; ++i) EXPECT_GE(crowded[i] - crowded[i - 1], 0.2 - 1e-9);
    EXPECT_LE(crowded[3] - crowded[0], 0.8 + 1e-9) << "across the start of the circle, too";
    EXPECT_NEAR(crowded[2], 0.5, 1e-9) << "what has room stays";
    const std::vector<double> full = SeparateAround({0.1, 0.2, 0.3, 0.4}, std::vector<double>(4, 0.3));
    EXPECT_NEAR(full[3] - full[0], 0.75, 1e-9);
    EXPECT_NEAR(full[0] + full[1] + full[2] + full[3], 1.0, 1e-9) << "rotated as little as possible";
}

TEST(Ring, BoxesOfAllSizesKeepApartAroundTheHole) {
    std::vector<Box> sizes;
    double steps = 0;
    const Box gaps{0.5, 0.25}, step{3, 1.75};
    const auto stepsOf = [&](const Box& box) {
        return std::max((box.width + gaps.width) / step.width, (box.height + gaps.height) / step.height);
    };
    for (int i = 0; i < 30; ++i) {
        sizes.push_back({1.0 + i % 4, 0.5 + i % 3});
        steps += stepsOf(sizes.back());
    }
    for (const int mostLanes : {1, 3}) {
        const Ring ring({2, 1, 2}, {4, 2.5}, gaps, step, steps, mostLanes);
        std::vector<double> turns, distance;
        for (const Box& size : sizes) {
            turns.push_back(0.3);
            distance.push_back(ring.TurnsOf(stepsOf(size)));
        }
        const std::vector<Point> centers =
            ring.Places(SeparateAround(turns, distance), std::vector<bool>(30));
        std::vector<Rect> boxes;
        for (std::size_t i = 0; i < sizes.size(); ++i)
            boxes.push_back(RectAround(centers[i], sizes[i].width, sizes[i].height));
        SpreadBoxes(boxes, gaps.width, gaps.height);
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            EXPECT_FALSE(Overlap(boxes[i], RectAround({}, 4, 2)));
            for (std::size_t k = 0; k < i; ++k)
                EXPECT_FALSE(
                    Overlap(boxes[i], RectAround(boxes[k].Center(), sizes[k].width + 2 * gaps.width - 1e-6,
                                                 sizes[k].height + 2 * gaps.height - 1e-6)))
                    << i << " and " << k;
        }
    }
}

}  // namespace
}  // namespace norvelis::layout
