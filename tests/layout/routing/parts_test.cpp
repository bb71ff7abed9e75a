#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/geometry.h"
#include "layout/geometry/funnel.h"
#include "layout/routing/free_space.h"
#include "layout/routing/parallel_runs.h"
#include "layout/spacing/separate.h"

namespace norvelis::layout {
namespace {

TEST(Geometry, SegmentsAndTrianglesHitTheInsideOfARectangleOnly) {
    const Rect rect{0, 0, 2, 1};
    EXPECT_TRUE(SegmentHits({-1, 0.5}, {3, 0.5}, rect));
    EXPECT_TRUE(SegmentHits({-1, -1}, {1, 0.9}, rect));
    EXPECT_FALSE(SegmentHits({-1, 1}, {3, 1}, rect)) << "along the border";
    EXPECT_FALSE(SegmentHits({-1, 0.5}, {-0.1, 0.5}, rect));
    EXPECT_TRUE(TriangleHits({-1, -1}, {4, -1}, {1, 5}, rect)) << "around it";
    EXPECT_TRUE(TriangleHits({0.5, 0.4}, {0.6, 0.4}, {0.5, 0.5}, rect)) << "inside it";
    EXPECT_FALSE(TriangleHits({-1, 0.5}, {-1, 3}, {1.5, 3}, rect)) << "past a corner";
    EXPECT_FALSE(TriangleHits({-2, 0}, {0, 2}, {-1, 1}, rect)) << "no triangle, and past a corner";
}

TEST(Separate, MovesWhatIsTooNearAndNothingElse) {
    using testing::DoubleNear;
    using testing::ElementsAre;
    EXPECT_THAT(
        Separate({0, 5, 5, 9}, {1, 1, 1, 1}),
        ElementsAre(DoubleNear(0, 1e-9), DoubleNear(4.5, 1e-9), DoubleNear(5.5, 1e-9), DoubleNear(9, 1e-9)));
    EXPECT_THAT(SeparateWithin({9, 9, 9}, 1, 0, 10),
                ElementsAre(DoubleNear(8, 1e-9), DoubleNear(9, 1e-9), DoubleNear(10, 1e-9)));
    EXPECT_THAT(SeparateWithin({5, 5, 5}, 8, 0, 10),
                ElementsAre(DoubleNear(0, 1e-9), DoubleNear(5, 1e-9), DoubleNear(10, 1e-9)));
}

TEST(ParallelRuns, TakeTheFreePlaceNearestToTheWish) {
    ParallelRuns runs(0.5, -10, 10);
    EXPECT_DOUBLE_EQ(runs.Nearest(1, 0, 3, 0, 10, 1).at, 1);
    runs.Add({1, 0, 10, 1});
    EXPECT_DOUBLE_EQ(runs.Nearest(1.1, 0, 3, 5, 20, 2).at, 1.5);
    EXPECT_DOUBLE_EQ(runs.Nearest(1.1, 0, 3, 11, 20, 2).at, 1.1) << "beyond the run's end";
    EXPECT_DOUBLE_EQ(runs.Nearest(1.1, 0, 3, 5, 20, 1).at, 1) << "runs of one net share a track";
    const ParallelRuns::Space narrow = runs.Nearest(1, 0.9, 1.2, 0, 10, 3);
    EXPECT_TRUE(narrow.crowded);
    EXPECT_GE(narrow.at, 0.9);
    EXPECT_LE(narrow.at, 1.2);
}

TEST(FreeSpace, CellsCoverThePageBetweenTheBoxes) {
    const std::vector<Rect> boxes{{0, 0, 2, 1}, {3, 0.5, 5, 2}, {1, 3, 4, 4}};
    const FreeSpace space(boxes, 0, 1);
    double area = 0;
    for (const FreeCell& cell : space.Cells()) {
        area += cell.area.Width() * cell.area.Height();
        for (const Rect& box : boxes) EXPECT_FALSE(Overlap(cell.area, box));
        for (const Portal& portal : cell.portals) {
            const Rect& other = space.Cells()[static_cast<std::size_t>(portal.to)].area;
            EXPECT_TRUE(portal.y == other.y0 || portal.y == other.y1);
            EXPECT_GE(portal.lo, other.x0);
            EXPECT_LE(portal.hi, other.x1);
        }
    }
    EXPECT_NEAR(area, 7 * 6 - 2 - 3 - 3, 1e-9);
    for (int box = 0; box < 3; ++box) {
        std::set<Side> sides;
        for (const Exit& exit : space.ExitsOf(box)) sides.insert(exit.side);
        EXPECT_EQ(sides.size(), 4u);
    }
}

TEST(Funnel, GoesStraightThroughOpenDoorsAndAroundCorners) {
    const auto upwards = [](double lo, double hi, double y) { return Door{{lo, y}, {hi, y}}; };
    EXPECT_EQ(ShortestThrough({0, 0}, {upwards(-1, 1, 1), upwards(-2, 2, 2)}, {0, 3}),
              (std::vector<Point>{{0, 0}, {0, 3}}));
    EXPECT_EQ(ShortestThrough({0, 0}, {upwards(2, 4, 1), upwards(-4, -2, 3)}, {0, 4}),
              (std::vector<Point>{{0, 0}, {2, 1}, {-2, 3}, {0, 4}}));
}

}  // namespace
}  // namespace norvelis::layout
