#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "layout/geometry/obstacles.h"
#include "layout/place_and_route.h"
#include "layout/routing/drawing_rules.h"

namespace norvelis::layout {
namespace {

using testing::IsEmpty;

// The eight choices of a user.
const Style kChoices[] = {StyleOfCells(1, 0, 5, 0), StyleOfCells(1, 1, 3, 1), StyleOfCells(2, 1, 1, 2),
                          StyleOfCells(3, 2, 2, 2), StyleOfCells(3, 3, 1, 1), StyleOfCells(3, 3, 22, 2),
                          StyleOfCells(6, 2, 0, 0), StyleOfCells(6, 2, 21, 2)};

Graph Boxes(int count) {
    Graph graph;
    for (int i = 0; i < count; ++i) graph.boxes.push_back({i % 8 == 0 ? 2.4 : 2.05, i % 6 == 0 ? 1.22 : 1.1});
    return graph;
}

void Join(Graph& graph, int from, int to) {
    graph.lines.push_back({from, to, 0.6 + 0.05 * static_cast<double>(graph.lines.size() % 13), 0.2});
}

/// A hub with members, every fourth of them its owner instead.
Graph Star(int members, bool withOwners) {
    Graph star = Boxes(1 + members);
    for (int i = 1; i <= members; ++i) {
        const bool owns = withOwners && i % 4 == 0;
        Join(star, owns ? i : 0, owns ? 0 : i);
    }
    return star;
}

/// A tree that nobody looks at from above: lines lead in both directions.
Graph UndirectedTree(int boxes) {
    Graph tree = Boxes(boxes);
    for (int i = 1; i < boxes; ++i) {
        const int other = std::max(0, i - 1 - i * 7 % (6 + i / 3));
        Join(tree, i % 2 == 0 ? other : i, i % 2 == 0 ? i : other);
    }
    return tree;
}

double RatioOf(const Graph& graph, const Placement& placement) {
    std::vector<Rect> areas;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        areas.push_back(RectAround(placement.centers[i], graph.boxes[i].width, graph.boxes[i].height));
    for (const Route& route : placement.routes)
        for (const Point& point : route.points) areas.push_back(RectOf(point, point));
    const Rect page = BoundsOf(areas);
    return page.Width() / page.Height();
}

TEST(Blocks, StarsFitAPageWithoutCrossingsInAllChoices) {
    for (const int members : {20, 100, 300}) {
        for (const bool withOwners : {false, true}) {
            if (withOwners && members < 100) continue;  // few owners are a column of their own
            const Graph star = Star(members, withOwners);
            for (const Style& style : kChoices) {
                const auto trace = testing::Message()
                                   << members << (withOwners ? ", some own the hub, " : ", ")
                                   << NameOf(style);
                const Placement placement = PlaceAndRoute(star, style);
                EXPECT_THAT(BrokenRules(star, placement), IsEmpty()) << trace;
                EXPECT_EQ(Crossings(placement), 0) << trace;
                const LabelFaults labels = FaultsOfLabels(star, placement);
                EXPECT_EQ(labels.crossed + labels.astray, 0) << trace;
                const double ratio = RatioOf(star, placement);
                EXPECT_LE(ratio, 2.2) << trace;
                EXPECT_GE(ratio, 0.45) << trace;
            }
        }
    }
}

TEST(Blocks, InLayersOwnersOfTheHubAreBeforeItAndMembersBehind) {
    const Graph star = Star(60, true);
    for (const Style& style : {kChoices[0], kChoices[1], kChoices[2]}) {
        const std::vector<Point> centers = PlaceAndRoute(star, style).centers;
        for (const Line& line : star.lines) {
            const Point from = centers[static_cast<std::size_t>(line.from)],
                        to = centers[static_cast<std::size_t>(line.to)];
            EXPECT_TRUE(style.placeStyle == PlaceStyle::LeftToRight ? from.x < to.x : from.y > to.y);
        }
    }
}

TEST(Blocks, HubsWithinASchemaKeepTheRulesInAllChoices) {
    for (std::uint64_t seed = 1; seed <= 3; ++seed) {
        Graph graph = SchemaLike(25, 1.5, seed);
        for (int leaf = 25; leaf < 70; ++leaf) {
            graph.boxes.push_back({2.0 + 0.1 * (leaf % 5), 1.1});
            Join(graph, leaf % 3, leaf);
        }
        for (const Style& style : kChoices) {
            const Placement placement = PlaceAndRoute(graph, style);
            EXPECT_THAT(BrokenRules(graph, placement), IsEmpty()) << "seed " << seed << ", " << NameOf(style);
            ExpectEqual(placement, PlaceAndRoute(graph, style));
        }
    }
}

TEST(Blocks, TreesHaveNoCrossingsOnRings) {
    for (const int boxes : {40, 150, 300}) {
        const Graph tree = UndirectedTree(boxes);
        for (const Style& style : kChoices) {
            if (style.placeStyle != PlaceStyle::Radial && style.placeStyle != PlaceStyle::Circular) continue;
            const auto trace = testing::Message() << boxes << " boxes, " << NameOf(style);
            const Placement placement = PlaceAndRoute(tree, style);
            EXPECT_THAT(BrokenRules(tree, placement), IsEmpty()) << trace;
            EXPECT_EQ(Crossings(placement), 0) << trace;
        }
    }
}

TEST(Layered, PagesOfWideSchemasAreShapedLikePaper) {
    for (const int records : {60, 150}) {
        const int owners = records / 10;
        Graph flat = Boxes(records);
        for (int i = 1; i < records; ++i) {
            Join(flat, i < owners ? i / 3 : i % owners, i);
            if (i > owners && i % 3 == 0) Join(flat, (i / 3) % owners, i);
        }
        for (const Style& style : {kChoices[0], kChoices[1], kChoices[2]}) {
            const double ratio = RatioOf(flat, PlaceAndRoute(flat, style));
            EXPECT_GE(ratio, 0.7) << records << ", " << NameOf(style);
            EXPECT_LE(ratio, 2.2) << records << ", " << NameOf(style);
        }
    }
}

}  // namespace
}  // namespace norvelis::layout
