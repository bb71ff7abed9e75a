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
const std::vector<Point> threeCenters{{0, 0}, {6, 0}, {3, 4}};

std::vector<Route> RouteThree(int routeStyle) {
    Style style;
    style.routeStyle = routeStyle;
    return RouteLines(ThreeBoxes(), threeCenters, style);
}

TEST(RouteStyles, RightAnglesAreLevelOrUpright) {
    for (const int style : {0, 1, 3, 5, 17, 21, 22, 99}) {
        for (const Route& route : RouteThree(style))
            for (std::size_t i = 1; i < route.points.size(); ++i)
                EXPECT_TRUE(route.points[i].x == route.points[i - 1].x ||
                            route.points[i].y == route.points[i - 1].y);
    }
}

TEST(RouteStyles, StraightIsOnePieceTowardsTheMiddles) {
    for (const int style : {2, 9, 16}) {
        const std::vector<Point> way = RouteThree(style)[1].points;
        ASSERT_EQ(way.size(), 2u);
        EXPECT_NEAR(Cross(way[1] - way[0], Point{3, 4}), 0, 1e-9);
    }
}

TEST(RouteStyles, SimpleBendsOnceInTheNamedOrder) {
    const std::vector<Point> levelFirst = RouteThree(21)[1].points, uprightFirst = RouteThree(22)[1].points;
    ASSERT_EQ(levelFirst.size(), 3u);
    EXPECT_EQ(levelFirst[0].y, levelFirst[1].y);
    ASSERT_EQ(uprightFirst.size(), 3u);
    EXPECT_EQ(uprightFirst[0].x, uprightFirst[1].x);
}

TEST(RouteStyles, FlowLeavesAndArrivesOnTheNamedSides) {
    const struct {
        int style;
        Point leaves, arrives;  // from the middles of boxes above one another or side by side
        Point way;
    } cases[] = {{5, {0, -0.5}, {0, 0.5}, {0, -4}},  {12, {0, 0.5}, {0, -0.5}, {0, 4}},
                 {6, {1, 0}, {-1, 0}, {6, 0}},       {13, {-1, 0}, {1, 0}, {-6, 0}},
                 {17, {0, -0.5}, {0, 0.5}, {0, -4}}, {3, {0, -0.5}, {0, 0.5}, {0, -4}},
                 {8, {1, 0}, {-1, 0}, {6, 0}}};
    for (const auto& c : cases) {
        Style style;
        style.routeStyle = c.style;
        const Graph graph{{{2, 1}, {2, 1}}, {{0, 1, 0.5, 0.2}}};
        const std::vector<Point> way = RouteLines(graph, {{0, 0}, c.way}, style)[0].points;
        EXPECT_EQ(way.front(), c.leaves) << c.style;
        EXPECT_EQ(way.back(), c.way + c.arrives) << c.style;
    }
}

TEST(RouteStyles, LinesOfOneOwnerShareTheTrunkOfATree) {
    const Graph graph{std::vector<Box>(4, Box{2, 1}), {{0, 1, 0.5, 0.2}, {0, 2, 0.5, 0.2}, {0, 3, 0.5, 0.2}}};
    Style style;
    style.routeStyle = 3;
    const auto routes = RouteLines(graph, {{0, 0}, {-4, -3}, {4, -3}, {8, -3}}, style);
    EXPECT_EQ(routes[0].points.front(), routes[1].points.front());
    EXPECT_EQ(routes[1].points.front(), routes[2].points.front());
    EXPECT_EQ(routes[1].points[1], routes[2].points[1]) << "and its bar";
    EXPECT_NE(routes[1].points.back(), routes[2].points.back());
}

TEST(RouteStyles, ParallelLinesRunSideBySide) {
    const Graph graph{std::vector<Box>(2, Box{2, 1}), std::vector<Line>(3, Line{0, 1, 0.3, 0.2})};
    for (const int routeStyle : {1, 2}) {
        Style style;
        style.routeStyle = routeStyle;
        const auto routes = RouteLines(graph, {{0, 0}, {0, -4}}, style);
        std::vector<double> x;
        for (const Route& route : routes) {
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
