#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "layout/labels/label_spots.h"
#include "layout/routing/untangle.h"
#include "layout/spacing/constraint_graph.h"
#include "layout/spacing/spacing.h"

namespace norvelis::layout {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ConstraintGraph, SpreadsToBothSidesAndLeavesWhatHasSpace) {
    ConstraintGraph graph({0, 1, 2, 10});
    graph.KeepApart(0, 1, 2);
    graph.KeepApart(1, 2, 2);
    graph.KeepApart(2, 3, 2);
    EXPECT_THAT(graph.Solve(1), ElementsAre(DoubleNear(-1, 1e-9), DoubleNear(1, 1e-9), DoubleNear(3, 1e-9),
                                            DoubleNear(10, 1e-9)));
}

TEST(ConstraintGraph, SqueezesUpToTheDistances) {
    ConstraintGraph graph({-10, 0, 10});
    graph.KeepApart(0, 1, 2);
    graph.KeepApart(1, 2, 3);
    const std::vector<double> places = graph.Solve(0);
    EXPECT_NEAR(places[1] - places[0], 2, 1e-9);
    EXPECT_NEAR(places[2] - places[1], 3, 1e-9);
}

TEST(ConstraintGraph, WhatIsInReachFollows) {
    ConstraintGraph graph({0, 1, 1.5});
    graph.KeepApart(0, 1, 6);
    graph.KeepWithin(1, 2, 1);
    const std::vector<double> places = graph.Solve(1);
    EXPECT_NEAR(places[1] - places[0], 6, 1e-9);
    EXPECT_LE(std::abs(places[2] - places[1]), 1 + 1e-9);
}

TEST(ConstraintGraph, ContradictionsShrinkToWhatIsThereAndNothingElseDoes) {
    // Three that must stay within 1 of the first, at distances that ask for 3.
    ConstraintGraph graph({0, 0.1, 0.4, 0.8, 5, 6});
    for (const int i : {1, 2, 3}) graph.KeepWithin(0, i, 1);
    graph.KeepApart(1, 2, 1.5);
    graph.KeepApart(2, 3, 1.5);
    graph.KeepApart(4, 5, 3);
    const std::vector<double> places = graph.Solve(1);
    EXPECT_GE(places[2] - places[1], 0.3 - 1e-9);
    EXPECT_GE(places[3] - places[2], 0.4 - 1e-9);
    for (const std::size_t i : {1, 2, 3}) EXPECT_LE(std::abs(places[i] - places[0]), 1 + 1e-9);
    EXPECT_NEAR(places[5] - places[4], 3, 1e-9);
}

TEST(ConstraintGraph, JoinsTwoOnlyWhereBothMayBe) {
    ConstraintGraph graph({0, 4, 6, 20});
    graph.KeepApart(0, 1, 3);
    graph.KeepApart(2, 3, 14);
    std::vector<double> places = graph.Solve(1);
    ASSERT_TRUE(graph.Join(1, 2, places));
    EXPECT_EQ(places[1], places[2]);
    EXPECT_GE(places[1], places[0] + 3);
    EXPECT_LE(places[2], places[3] - 14 + 1e-9);
    EXPECT_FALSE(graph.Join(0, 3, places)) << "the others are between";
}

/// Two boxes far above two others; from each a line straight down, both crossed by a horizontal line between
/// two more.
Sketch Crossed() {
    Sketch sketch;
    sketch.boxes = {{0, 10, 2, 11},   {2.2, 10, 4.2, 11}, {0, 0, 2, 1},
                    {2.2, 0, 4.2, 1}, {-4, 5, -2, 6},     {6, 5, 8, 6}};
    sketch.lines = {{0, 2, 1, 0.2}, {1, 3, 1, 0.2}, {4, 5, 1, 0.2}};
    sketch.paths = {{{1.9, 10}, {1.9, 1}}, {{2.3, 10}, {2.3, 1}}, {{-2, 5.5}, {6, 5.5}}};
    sketch.firstSegments = {FirstSegment::Vertical, FirstSegment::Vertical, FirstSegment::Horizontal};
    sketch.labels.resize(3);
    return sketch;
}

TEST(LabelSpots, AreBetweenTheLinesThatCrossTheirOwn) {
    Sketch sketch = Crossed();
    ChooseLabelSpots(sketch);
    EXPECT_THAT(CoveredLabels(sketch), IsEmpty());
    for (const std::size_t line : {0u, 1u, 2u}) {
        ASSERT_EQ(sketch.labels[line].segment, 0) << line;
        EXPECT_TRUE(SegmentHits(sketch.paths[line][0], sketch.paths[line][1], LabelArea(sketch, line)));
    }
}

TEST(LabelSpots, MoveToAnotherSegmentOnlyWhileThereIsOne) {
    Sketch sketch = Crossed();
    sketch.paths[2] = {{-2, 5.5}, {5, 5.5}, {5, 5.2}, {6, 5.2}};
    sketch.labels = {{0, 3, 0}, {0, 7, 0}, {0, 2, 0}};
    EXPECT_THAT(CoveredLabels(sketch), ElementsAre(0, 1, 2)) << "each over another's line";
    std::vector<std::vector<char>> tried;
    EXPECT_TRUE(MoveLabels(sketch, {2}, tried));
    EXPECT_NE(sketch.labels[2].segment, 0);
    EXPECT_FALSE(MoveLabels(sketch, {0}, tried)) << "it has one segment only";
}

TEST(MakeSpace, KeepsLinesBoxesAndLabelsApartInTheirOrder) {
    Sketch sketch = Crossed();
    sketch.boxes.push_back({1.92, 7, 2.2, 8});  // between the vertical lines, next to touching the first
    sketch.labels = {{0, 7.5, 0}, {0, 3, 0}, {0, 2.1, 0}};
    MakeSpace(sketch, 0.5, 0.5, 0.125, 1);
    EXPECT_THAT(CoveredLabels(sketch), IsEmpty());
    const double first = sketch.paths[0][0].x, second = sketch.paths[1][0].x;
    const Rect &between = sketch.boxes[6], label = LabelArea(sketch, 0);
    EXPECT_LT(label.x1, between.x0);
    EXPECT_GE(second - between.x1, 0.125 - 1e-9);
    EXPECT_EQ(sketch.paths[0][1].y, sketch.boxes[2].y1) << "lines still end on their boxes";
    EXPECT_GE(first, sketch.boxes[2].x0);
    EXPECT_LE(first, sketch.boxes[2].x1);
}

TEST(MakeSpace, CrowdedLinesGetTheirDistanceAndBoxesGiveSpace) {
    Sketch sketch;
    sketch.boxes = {{0, 0, 2, 1}, {2.3, 0, 4.3, 1}, {-3, 6, 7, 7}, {-3, -6, 7, -5}};
    for (int i = 0; i < 8; ++i) {  // eight lines through a gap that is made for one
        const double x = 2.1 + 0.01 * i;
        sketch.lines.push_back({2, 3, 0, 0});
        sketch.paths.push_back({{x, 6}, {x, -5}});
        sketch.firstSegments.push_back(FirstSegment::Vertical);
    }
    sketch.labels.resize(8);
    MakeSpace(sketch, 0.5, 0.5, 0.125, 1);
    for (std::size_t i = 1; i < 8; ++i)
        EXPECT_GE(sketch.paths[i][0].x - sketch.paths[i - 1][0].x, 0.125 - 1e-9) << i;
    EXPECT_LT(sketch.boxes[0].x1, sketch.paths[0][0].x);
    EXPECT_GT(sketch.boxes[1].x0, sketch.paths[7][0].x);
}

TEST(MakeSpace, TakesJogsOutThatNothingAsksFor) {
    Sketch sketch;
    sketch.boxes = {{0, 0, 2, 1}, {0, 6, 2, 7}};
    sketch.lines = {{0, 1, 0, 0}};
    sketch.paths = {{{0.8, 1}, {0.8, 3}, {1.1, 3}, {1.1, 6}}};
    sketch.firstSegments = {FirstSegment::Vertical};
    sketch.labels.resize(1);
    MakeSpace(sketch, 0.5, 0.5, 0.125, 1);
    EXPECT_EQ(sketch.paths[0][0].x, sketch.paths[0][3].x);
}

TEST(MakeSpace, SlantingLinesWithBendsKeepTheirEndsAtTheirBoxes) {
    Sketch sketch;
    sketch.boxes = {{0, 0, 2, 1}, {5, 4, 7, 5}};
    sketch.lines = {{0, 1, 0, 0}};
    sketch.paths = {{{2, 0.5}, {3, 1.5}, {3.5, 3}, {5, 4.5}}};
    sketch.firstSegments = {FirstSegment::Slanting};
    sketch.labels.resize(1);
    MakeSpace(sketch, 0.5, 0.5, 0.125, 1);
    EXPECT_NEAR(sketch.paths[0].front().x, sketch.boxes[0].x1, 1e-9);
    EXPECT_NEAR(sketch.paths[0].back().x, sketch.boxes[1].x0, 1e-9);
}

TEST(Untangle, NeighboursChangePlacesWhereThatSavesCrossings) {
    Sketch sketch;
    sketch.boxes = {{0, 0, 2, 1}, {4, 2, 6, 3}, {4, 4, 6, 5}};
    sketch.lines = {{0, 1, 0, 0}, {0, 2, 0, 0}};
    // The line to the upper box leaves on the right of the other one and crosses it.
    sketch.paths = {{{0.8, 1}, {0.8, 2.5}, {4, 2.5}}, {{1.2, 1}, {1.2, 4.5}, {4, 4.5}}};
    sketch.firstSegments = {FirstSegment::Vertical, FirstSegment::Vertical};
    sketch.labels.resize(2);
    const auto crossing = sketch.paths;
    Untangle(sketch);
    EXPECT_GT(sketch.paths[0][0].x, sketch.paths[1][0].x);
    const auto once = sketch.paths;
    Untangle(sketch);
    EXPECT_EQ(sketch.paths, once) << "nothing is left to save";

    sketch.paths = crossing;
    sketch.boxes.push_back({0.9, 3, 1.1, 4});
    Untangle(sketch);
    EXPECT_EQ(sketch.paths, crossing) << "a box bars it";
}

}  // namespace
}  // namespace norvelis::layout
