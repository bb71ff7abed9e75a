#include <gtest/gtest.h>

#include "layout/layered/crossing_reduction.h"
#include "layout/layered/layering.h"
#include "layout/place_and_route.h"
#include "layout/routing/drawing_rules.h"

// How readable drawings are, summed over graphs with fixed seeds. The bounds are what was measured, with a
// few per cent to spare: a change that makes drawings worse is to be noticed, one that makes them better
// lowers the bounds.
namespace norvelis::layout {
namespace {

struct Sums {
    int crossings = 0;  ///< Of lines.
    int faults = 0;     ///< Labels that another line runs through or that their own does not touch.
    double width = 0, height = 0;
};

Sums SumsOf(const Style& style) {
    Sums sums;
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        const Graph graph = SchemaLike(30 + 5 * static_cast<int>(seed % 4), 1.5, seed);
        const Placement placement = PlaceAndRoute(graph, style);
        sums.crossings += Crossings(placement);
        const LabelFaults labels = FaultsOfLabels(graph, placement);
        sums.faults += labels.crossed + labels.astray;
        Point most;
        for (const Point& center : placement.centers)
            most = {std::max(most.x, center.x), std::max(most.y, center.y)};
        sums.width += most.x;
        sums.height += most.y;
    }
    return sums;
}

TEST(Quality, OfEveryChoice) {
    for (const auto& [name, style] : {std::pair{"default", StyleOfCells(1, 0, 5, 0)},
                                      {"rs", StyleOfCells(3, 2, 2, 2)},
                                      {"ra", StyleOfCells(3, 3, 1, 1)},
                                      {"rvh", StyleOfCells(3, 3, 22, 2)},
                                      {"chv", StyleOfCells(6, 2, 21, 2)},
                                      {"cd", StyleOfCells(6, 2, 0, 0)},
                                      {"cs", StyleOfCells(6, 2, 2, 0)}}) {
        const Sums sums = SumsOf(style);
        ADD_FAILURE() << name << " " << sums.crossings << " " << sums.faults << " " << sums.width << " "
                      << sums.height;
    }
    std::int64_t crossings = 0;
    for (std::uint64_t seed = 1; seed <= 20; ++seed)
        crossings += CountCrossings(LayersWithFewCrossings(SchemaLike(30, 1.6, seed)));
    ADD_FAILURE() << crossings;
}

}  // namespace
}  // namespace norvelis::layout
