#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "layout/geometry/tangents.h"
#include "layout/graph/graph.h"
#include "layout/labels/labels.h"
#include "layout/routing/corner_loops.h"
#include "layout/routing/detours.h"
#include "layout/routing/nesting.h"
#include "layout/routing/straight.h"

namespace norvelis::layout {
namespace {

using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr double kGap = 0.125;

TEST(TautPaths, PassABoxOnEitherSide) {
    const std::vector<Rect> boxes{{0, 0, 2, 1}, {10, 0, 12, 1}, {5, -1, 7, 1.5}};
    const auto paths = TautPaths(boxes, Obstacles(boxes), 0, 1, kGap);
    ASSERT_THAT(paths, SizeIs(2));
    EXPECT_LT(LengthOf(paths[0]), LengthOf(paths[1]));
    EXPECT_GT(paths[0][1].y, 1.5) << "above, where it is nearer";
    EXPECT_LT(paths[1][1].y, -1);
    for (const auto& path : paths)
        for (std::size_t i = 1; i < path.size(); ++i)
            EXPECT_FALSE(SegmentHits(path[i - 1], path[i], boxes[2]));
    const std::vector<Rect> apart{boxes[0], boxes[1]};
    EXPECT_THAT(TautPaths(apart, Obstacles(apart), 0, 1, kGap), SizeIs(1));
}

TEST(RouteStraight, ALineThatABoxBarsPassesItWhereItCrossesFewerOthers) {
    // The shorter path from 0 to 1 leads above the box between, where two lines run down to it.
    const std::vector<Rect> boxes{
        {0, 0, 2, 1}, {20, 0, 22, 1}, {10, -1.2, 12, 1.4}, {9, 6, 10, 7}, {12, 6, 13, 7}};
    const std::vector<Line> lines{{0, 1, 0.5, 0.2}, {3, 2, 0.5, 0.2}, {4, 2, 0.5, 0.2}};
    const std::vector<Point> path = RouteStraight(boxes, lines, kGap).points[0];
    ASSERT_GT(path.size(), 2u);
    EXPECT_LT(path[1].y, -1.2);
}

TEST(RouteStraight, LinesOfOnePairBowWhenTheirLabelsNeedIt) {
    const std::vector<Rect> boxes{{0, 0, 2, 1}, {6, 0, 8, 1}};
    const std::vector<Line> lines(9, Line{0, 1, 0.8, 0.2});
    std::vector<double> heights;
    for (const auto& path : RouteStraight(boxes, lines, kGap).points) {
        EXPECT_TRUE(path.size() == 2 || path.size() == 4);
        heights.push_back(Between(path[path.size() / 2 - 1], path[path.size() / 2], 0.5).y);
    }
    std::sort(heights.begin(), heights.end());
    for (std::size_t i = 1; i < heights.size(); ++i)
        EXPECT_GE(heights[i] - heights[i - 1], 0.2 + kGap - 1e-9);
}

TEST(CornerLoops, GoAroundFreeCornersOutsideEachOther) {
    const std::vector<Rect> boxes{{0, 0, 3, 1}, {3.2, 0.8, 6, 2}};  // the upper right corner is taken
    const std::vector<Line> lines(6, Line{0, 0, 0.8, 0.2});
    std::set<std::pair<double, double>> ends;
    for (const auto& loop : LoopsAroundCorners(boxes[0], lines, Obstacles(boxes), kGap)) {
        ASSERT_THAT(loop, SizeIs(5));
        for (std::size_t i = 1; i < loop.size(); ++i)
            for (const Rect& box : boxes) EXPECT_FALSE(SegmentHits(loop[i - 1], loop[i], box.Grown(-1e-6)));
        EXPECT_GE(Length(loop[2] - loop[1]), 0.8) << "space for the label";
        ends.emplace(loop.front().x, loop.front().y);
        ends.emplace(loop.back().x, loop.back().y);
    }
    EXPECT_THAT(ends, SizeIs(12));
}

TEST(NestBends, LinesAroundOneCornerRunOutsideEachOther) {
    const std::vector<Rect> boxes{{0, 0, 2, 1}};
    const Point corner{2.125, 1.125};
    std::vector<std::vector<Point>> paths{
        {{-1, 2}, corner, {3, -1}}, {{0, 2}, corner, {4, -1}}, {{-1, 3}, {1, 5}, {4, 4}}};
    const auto alone = paths[2];
    NestBends(paths, boxes, kGap);
    EXPECT_GE(Length(paths[0][1] - paths[1][1]), kGap - 1e-9);
    EXPECT_EQ(paths[2], alone);
    for (const auto& path : paths)
        for (std::size_t i = 1; i < path.size(); ++i)
            EXPECT_FALSE(SegmentHits(path[i - 1], path[i], boxes[0]));
}

TEST(LeadAroundLabels, ALineLeavesAnothersLabelAndKeepsItsOwn) {
    const std::vector<Rect> boxes{
        {-6, -0.5, -5, 0.5}, {5, -0.5, 6, 0.5}, {-0.5, -6, 0.5, -5}, {-0.5, 5, 0.5, 6}};
    const std::vector<Line> lines{{0, 1, 1, 0.2}, {2, 3, 0.8, 0.2}};
    std::vector<std::vector<Point>> paths{{{-5, 0}, {5, 0}}, {{0.2, -5}, {0.2, 5}}};
    const std::vector<Point> labels{{0, 0}, {0.2, 3}};
    const auto crosses = [&](std::size_t line, std::size_t label) {
        const Rect area = RectAround(labels[label], lines[label].labelWidth, lines[label].labelHeight);
        for (std::size_t i = 1; i < paths[line].size(); ++i)
            if (SegmentHits(paths[line][i - 1], paths[line][i], area)) return true;
        return false;
    };
    ASSERT_TRUE(crosses(1, 0));
    LeadAroundLabels(paths, lines, boxes, labels);
    EXPECT_THAT(paths[0], SizeIs(2));
    EXPECT_FALSE(crosses(1, 0));
    EXPECT_TRUE(crosses(1, 1));
}

TEST(ClearLabels, ALabelThatIsCrossedMovesAndAnotherMakesWay) {
    const std::vector<Rect> boxes{{-1, -0.5, 0, 0.5}, {3, -0.5, 4, 0.5}, {2, -3, 3, -2}};
    // The first line is crossed in its middle; on its right the second one's label is in the way.
    const std::vector<Line> lines{{0, 1, 1, 0.2}, {1, 2, 1, 0.2}, {0, 2, 0, 0}};
    const std::vector<std::vector<Point>> paths{
        {{0, 0}, {3, 0}}, {{3.5, -0.5}, {3.5, -2.5}, {3, -2.5}}, {{1, -5}, {1, 5}}};
    std::vector<Point> middles{{1.1, 0}, {2.45, -0.05}, {}};
    EXPECT_THAT(ClearLabels(boxes, lines, paths, middles), IsEmpty());
    EXPECT_GE(middles[0].x, 1.5) << "to the right of the line through it";
    EXPECT_FALSE(Overlap(RectAround(middles[0], 1, 0.2), RectAround(middles[1], 1, 0.2)));
    EXPECT_NEAR(middles[1].x, 3.5, 0.7) << "on its own line now";
}

TEST(PlaceLabels, KeepOffBoxesAndOneAnother) {
    const std::vector<Rect> boxes{{0, 0, 2, 1}, {3, 0, 5, 1}};
    const std::vector<Line> lines(4, Line{0, 1, 0.9, 0.2});
    std::vector<std::vector<Point>> paths;
    for (int i = 0; i < 4; ++i) paths.push_back({{2, 0.4 + 0.05 * i}, {3, 0.4 + 0.05 * i}});
    std::vector<Point> middles(4);
    PlaceLabels(boxes, lines, paths, {0, 1, 2}, middles);
    middles[3] = middles[0];
    PlaceLabels(boxes, lines, paths, {3}, middles);
    for (std::size_t i = 0; i < 4; ++i) {
        const Rect label = RectAround(middles[i], 0.9, 0.2);
        for (const Rect& box : boxes) EXPECT_FALSE(Overlap(label, box));
        for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(Overlap(label, RectAround(middles[k], 0.9, 0.2)));
    }
    EXPECT_THAT(ClearLabels(boxes, lines, paths, middles), Not(IsEmpty()))
        << "four labels cannot be on lines so near";
}

}  // namespace
}  // namespace norvelis::layout
