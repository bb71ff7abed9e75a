#include <gtest/gtest.h>

#include "layout/geometry/obstacles.h"
#include "layout/layered/crossing_reduction.h"
#include "layout/layered/layering.h"
#include "layout/place_and_route.h"
#include "layout/routing/drawing_rules.h"

// How readable drawings are, summed over graphs with fixed seeds. The bounds are what was measured with a
// little to spare: a change that makes drawings worse is noticed, one that makes them better lowers the
// bounds.
namespace norvelis::layout {
namespace {

TEST(Quality, DrawingsHaveFewCrossingsAndFaults) {
    const struct {
        const char* name;
        Style style;
        int crossings, faults;  ///< Measured: 223 and 0, 217 and 1.
    } cases[] = {{"radial with right angles", StyleOfCells(3, 3, 1, 1), 235, 0},
                 {"circular with straight lines", StyleOfCells(6, 2, 2, 0), 225, 0}};
    for (const auto& each : cases) {
        int crossings = 0, faults = 0;
        for (std::uint64_t seed = 4; seed <= 10; ++seed) {
            const Graph graph = SchemaLike(30 + 5 * static_cast<int>(seed % 4), 1.5, seed);
            const Placement placement = PlaceAndRoute(graph, each.style);
            crossings += Crossings(placement);
            const LabelFaults labels = FaultsOfLabels(graph, placement);
            faults += labels.crossed + labels.astray;
        }
        EXPECT_LE(crossings, each.crossings) << each.name;
        EXPECT_LE(faults, each.faults) << each.name;
    }
}

TEST(Quality, TheBestOfSeveralLayeringsIsTaken) {
    const struct {
        int records;
        std::uint64_t firstSeed, lastSeed;
        std::int64_t crossings;  ///< Measured: 66, 47, 294.
    } cases[] = {{30, 1, 6, 68}, {60, 1, 1, 48}, {130, 2, 2, 298}};
    for (const auto& each : cases) {
        std::int64_t crossings = 0;
        for (std::uint64_t seed = each.firstSeed; seed <= each.lastSeed; ++seed)
            crossings += CountCrossings(LayersWithFewCrossings(SchemaLike(each.records, 1.6, seed)));
        EXPECT_LE(crossings, each.crossings) << each.records << " records";
    }
}

TEST(Quality, DeepNetworksAreNoBandsAndTreesThatHangOnThemKeepTheirDirection) {
    constexpr int kRecords = 90, kHanging = 4;
    Random random(3);
    const auto below = [&](int n) { return static_cast<int>(random.Rnd() * n); };
    Graph graph{std::vector<Box>(kRecords + kHanging, Box{2, 1}), {}};
    for (int i = 1; i < kRecords + kHanging; ++i) graph.lines.push_back({i - 1, i, 0.8, 0.2});
    for (int i = 8; i < kRecords; ++i) graph.lines.push_back({i - 2 - below(6), i, 0.8, 0.2});
    for (const int placeStyle : {1, 2}) {
        const Placement placement = PlaceAndRoute(graph, StyleOfCells(placeStyle, 1, 1, 1));
        std::vector<Rect> boxes;
        for (const Point& center : placement.centers) boxes.push_back(RectAround(center, 2, 1));
        const Rect page = BoundsOf(boxes);
        EXPECT_GE(page.Width() / page.Height(), 0.7) << placeStyle;
        EXPECT_LE(page.Width() / page.Height(), 2.2) << placeStyle;
        for (int i = kRecords; i < kRecords + kHanging; ++i) {
            const auto member = static_cast<std::size_t>(i);
            const Point step = placement.centers[member] - placement.centers[member - 1];
            EXPECT_GT(placeStyle == 2 ? step.x : -step.y, 0) << i;
        }
    }
}

}  // namespace
}  // namespace norvelis::layout
