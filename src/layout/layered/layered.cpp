#include "layout/layered/layered.h"

#include <algorithm>
#include <cmath>

#include "layout/graph/route_rule.h"
#include "layout/layered/channel_routing.h"
#include "layout/layered/coordinates.h"
#include "layout/layered/grid.h"
#include "layout/layered/layering.h"
#include "layout/layered/loops.h"

namespace norvelis::layout {

namespace {

/// The phases work with layers from top to bottom, y growing downwards; for layers from left to right the
/// graph is transposed before and back after.
Graph Transposed(Graph graph) {
    for (Box& box : graph.boxes) std::swap(box.width, box.height);
    for (Line& line : graph.lines) std::swap(line.labelWidth, line.labelHeight);
    return graph;
}

/// Extra points keep the rounding of corners within the line gap of them, off everything else.
void Round(Route& route, double gap) {
    std::vector<Point> points;
    for (std::size_t i = 0; i + 1 < route.points.size(); ++i) {
        const Point a = route.points[i], b = route.points[i + 1];
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        const auto at = [&](double distance) {
            return Point{a.x + (b.x - a.x) * distance / length, a.y + (b.y - a.y) * distance / length};
        };
        points.push_back(a);
        if (length > 4 * gap) {
            points.push_back(at(2 * gap));
            points.push_back(at(length - 2 * gap));
        } else if (length > 2 * gap) {
            points.push_back(at(length / 2));
        }
    }
    points.push_back(route.points.back());
    route.points = std::move(points);
    route.curved = true;
}

Placement PlaceTopDown(const Graph& graph, const Style& style) {
    const bool trunks = RuleOf(style.routeStyle).family == RouteFamily::Tree;
    Grid grid = MakeGrid(graph, LayersWithFewCrossings(graph), style);
    const std::vector<Ports> ports = AssignCoordinates(graph, style, trunks, grid);
    Placement placement = RouteThroughChannels(graph, style, trunks, grid, ports);
    RouteLoops(graph, style, placement);
    return placement;
}

}  // namespace

Placement PlaceLayered(const Graph& graph, const Style& style) {
    const bool transposed = style.placeStyle == PlaceStyle::LeftToRight;
    Style transposedStyle = style;
    if (transposed) std::swap(transposedStyle.boxGapX, transposedStyle.boxGapY);
    Placement placement =
        transposed ? PlaceTopDown(Transposed(graph), transposedStyle) : PlaceTopDown(graph, style);
    const auto toPage = [&](Point& point) {
        point = transposed ? Point{point.y, -point.x} : Point{point.x, -point.y};
    };
    for (Point& center : placement.centers) toPage(center);
    for (Route& route : placement.routes) {
        for (Point& point : route.points) toPage(point);
        toPage(route.label);
        if (style.IsCurved() && route.points.size() > 2) Round(route, style.lineGap);
    }
    return placement;
}

}  // namespace norvelis::layout
