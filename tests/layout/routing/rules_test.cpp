#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "layout/circular/circular.h"
#include "layout/graph/graph.h"
#include "layout/radial/radial.h"
#include "layout/routing/drawing_rules.h"
#include "layout/routing/router.h"

namespace norvelis::layout {
namespace {

using testing::IsEmpty;

const Style kChoices[] = {StyleOfCells(3, 2, 2, 2), StyleOfCells(3, 3, 1, 1), StyleOfCells(3, 3, 22, 2),
                          StyleOfCells(6, 2, 21, 2), StyleOfCells(6, 2, 0, 0)};

Placement Draw(const Graph& graph, const Style& style) {
    return RouteMakingSpace(
        graph,
        style.placeStyle == PlaceStyle::Circular ? PlaceCircular(graph, style) : PlaceRadial(graph, style),
        style);
}

TEST(Rules, HoldForSchemasOfAllSizesInEveryChoice) {
    const struct {
        int records;
        double setsPerRecord;
    } schemas[] = {{2, 1}, {12, 1.5}, {60, 1.2}, {60, 1.6}, {200, 1.4}, {400, 1.6}};
    for (const auto& schema : schemas) {
        const Graph graph = SchemaLike(schema.records, schema.setsPerRecord, 42);
        for (const Style& style : kChoices)
            EXPECT_THAT(BrokenRules(graph, Draw(graph, style)), IsEmpty())
                << schema.records << " records, " << NameOf(style);
    }
}

TEST(Rules, HoldForManySeedsAndLabelsAreOnTheirLines) {
    int labels = 0, crossed = 0, astray = 0;
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        for (const int records : {12, 45}) {
            const Graph graph = SchemaLike(records, seed % 2 ? 1.2 : 1.6, seed);
            for (const Style& style : kChoices) {
                const Placement placement = Draw(graph, style);
                EXPECT_THAT(BrokenRules(graph, placement), IsEmpty())
                    << records << " records, seed " << seed << ", " << NameOf(style);
                const LabelFaults faults = FaultsOfLabels(graph, placement);
                crossed += faults.crossed;
                astray += faults.astray;
                labels += static_cast<int>(graph.lines.size());
            }
        }
    }
    EXPECT_LE(crossed, labels / 500) << "of " << labels << " labels";
    EXPECT_LE(astray, labels / 500) << "of " << labels << " labels";
}

TEST(Rules, HoldForEveryRouteStyle) {
    const Graph graph = SchemaLike(50, 1.5, 7);
    for (int route = 0; route <= 23; ++route) {
        for (const int ext : {0, 1, 2}) {
            const Placement placement = Draw(graph, StyleOfCells(3, 1, route, ext));
            EXPECT_THAT(BrokenRules(graph, placement), IsEmpty()) << route << ", " << ext;
            EXPECT_EQ(placement.routes.front().curved, ext == 2);
        }
    }
}

TEST(Rules, HoldForGraphsThatNobodyDraws) {
    const auto boxes = [](int n) { return std::vector<Box>(static_cast<std::size_t>(n), Box{3, 1.1}); };
    Graph star{boxes(301), {}}, pair{boxes(2), {}}, complete{boxes(30), {}}, loops{boxes(1), {}};
    for (int i = 1; i <= 300; ++i) star.lines.push_back({0, i, 0.9, 0.2});
    for (int i = 0; i < 40; ++i) pair.lines.push_back({i % 2, 1 - i % 2, 0.9, 0.2});
    for (int i = 0; i < 30; ++i)
        for (int k = 0; k < i; ++k) complete.lines.push_back({k, i, 0.9, 0.2});
    for (int i = 0; i < 20; ++i) loops.lines.push_back({0, 0, 0.9, 0.2});
    Graph points = SchemaLike(20, 1.5, 9);
    for (Box& box : points.boxes) box = {};
    for (Line& line : points.lines) line.labelWidth = line.labelHeight = 0;
    Graph sizes = SchemaLike(40, 1.4, 3);
    sizes.boxes[5] = {14, 9};
    sizes.boxes[9] = {0.5, 8};
    sizes.boxes[20] = {10, 0.4};
    Graph parts = SchemaLike(30, 1.2, 5);
    parts.boxes.resize(60, Box{3, 1});

    const struct {
        const char* name;
        Graph graph;
    } graphs[] = {{"one box", {boxes(1), {}}},
                  {"no lines", {boxes(1000), {}}},
                  {"star", star},
                  {"pair", pair},
                  {"complete", complete},
                  {"loops", loops},
                  {"sizes", sizes},
                  {"points", points},
                  {"parts", parts}};
    for (const auto& [name, graph] : graphs)
        for (const Style& style : kChoices)
            EXPECT_THAT(BrokenRules(graph, Draw(graph, style)), IsEmpty()) << name << ", " << NameOf(style);
    EXPECT_TRUE(Draw({}, kChoices[0]).centers.empty());
}

TEST(Rules, LinesMeetBoxesAtPointsOfTheirOwn) {
    const Graph graph = SchemaLike(100, 1.4, 11);
    for (const Style& style : kChoices) EXPECT_EQ(SharedPorts(Draw(graph, style)), 0) << NameOf(style);
}

TEST(Rules, EqualInputGivesEqualDrawings) {
    const Graph graph = SchemaLike(80, 1.5, 13);
    for (const Style& style : kChoices) ExpectEqual(Draw(graph, style), Draw(graph, style));
}

}  // namespace
}  // namespace norvelis::layout
