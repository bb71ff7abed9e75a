#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "layout/graph/graph.h"
#include "layout/routing/drawing_rules.h"
#include "layout/routing/router.h"

namespace norvelis::layout {
namespace {

/// Two boxes side by side, and one above between them; all lines from the first.
Graph ThreeBoxes() {
    return {std::vector<Box>(3, Box{2, 1}), {{0, 1, 0.5, 0.2}, {0, 2, 0.5, 0.2}}};
}
Placement RouteThree(int routeStyle) {
    return RouteMakingSpace(ThreeBoxes(), {{0, 0}, {6, 0}, {3, 4}}, StyleOfCells(3, 0, routeStyle, 0));
}

TEST(RouteStyles, RightAnglesAreHorizontalOrVertical) {
    for (const int style : {0, 1, 3, 5, 17, 21, 22, 99}) {
        for (const Route& route : RouteThree(style).routes)
            for (std::size_t i = 1; i < route.points.size(); ++i)
                EXPECT_TRUE(route.points[i].x == route.points[i - 1].x ||
                            route.points[i].y == route.points[i - 1].y);
    }
}

TEST(RouteStyles, StraightIsOneSegmentTowardsTheMiddles) {
    for (const int style : {2, 9, 16}) {
        const Placement placement = RouteThree(style);
        const std::vector<Point> path = placement.routes[1].points;
        ASSERT_EQ(path.size(), 2u);
        EXPECT_NEAR(Cross(path[1] - path[0], placement.centers[2] - placement.centers[0]), 0, 1e-9);
    }
}

TEST(RouteStyles, SimpleBendsOnceInTheNamedOrder) {
    const std::vector<Point> horizontalFirst = RouteThree(21).routes[1].points,
                             verticalFirst = RouteThree(22).routes[1].points;
    ASSERT_EQ(horizontalFirst.size(), 3u);
    EXPECT_EQ(horizontalFirst[0].y, horizontalFirst[1].y);
    ASSERT_EQ(verticalFirst.size(), 3u);
    EXPECT_EQ(verticalFirst[0].x, verticalFirst[1].x);
}

TEST(RouteStyles, FlowLeavesAndArrivesOnTheNamedSides) {
    const struct {
        int style;
        Point leaves, arrives;  // from the middles of boxes above one another or side by side
        Point member;
    } cases[] = {{5, {0, -0.5}, {0, 0.5}, {0, -4}},  {12, {0, 0.5}, {0, -0.5}, {0, 4}},
                 {6, {1, 0}, {-1, 0}, {6, 0}},       {13, {-1, 0}, {1, 0}, {-6, 0}},
                 {17, {0, -0.5}, {0, 0.5}, {0, -4}}, {3, {0, -0.5}, {0, 0.5}, {0, -4}},
                 {8, {1, 0}, {-1, 0}, {6, 0}}};
    for (const auto& c : cases) {
        const Graph graph{{{2, 1}, {2, 1}}, {{0, 1, 0.5, 0.2}}};
        const Placement placement =
            RouteMakingSpace(graph, {{0, 0}, c.member}, StyleOfCells(3, 0, c.style, 0));
        const std::vector<Point> path = placement.routes[0].points;
        EXPECT_NEAR(Length(path.front() - placement.centers[0] - c.leaves), 0, 1e-9) << c.style;
        EXPECT_NEAR(Length(path.back() - placement.centers[1] - c.arrives), 0, 1e-9) << c.style;
    }
}

TEST(RouteStyles, LinesOfOneOwnerShareTheTrunkOfATree) {
    const Graph graph{std::vector<Box>(4, Box{2, 1}), {{0, 1, 0, 0}, {0, 2, 0, 0}, {0, 3, 0, 0}}};
    const auto routes =
        RouteMakingSpace(graph, {{0, 0}, {-4, -3}, {4, -3}, {8, -3}}, StyleOfCells(1, 0, 3, 0)).routes;
    EXPECT_EQ(routes[0].points.front(), routes[1].points.front());
    EXPECT_EQ(routes[1].points.front(), routes[2].points.front());
    EXPECT_EQ(routes[1].points[1], routes[2].points[1]) << "and its bar";
    EXPECT_NE(routes[1].points.back(), routes[2].points.back());
}

TEST(RouteStyles, ParallelLinesRunSideBySide) {
    const Graph graph{std::vector<Box>(2, Box{2, 1}), std::vector<Line>(3, Line{0, 1, 0.3, 0.2})};
    for (const int routeStyle : {1, 2}) {
        const Style style = StyleOfCells(3, 0, routeStyle, 0);
        std::vector<double> x;
        for (const Route& route : RouteMakingSpace(graph, {{0, 0}, {0, -4}}, style).routes) {
            ASSERT_EQ(route.points.size(), 2u);
            EXPECT_EQ(route.points[0].x, route.points[1].x);
            x.push_back(route.points[0].x);
        }
        std::sort(x.begin(), x.end());
        EXPECT_GE(x[1] - x[0], style.lineGap - 1e-9);
        EXPECT_GE(x[2] - x[1], style.lineGap - 1e-9);
    }
}

}  // namespace
}  // namespace norvelis::layout
