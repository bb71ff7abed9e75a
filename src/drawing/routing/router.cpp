#include "drawing/routing/router.h"

#include <cstddef>

#include "drawing/routing/curves.h"
#include "drawing/routing/labels.h"
#include "drawing/routing/orthogonal.h"

namespace norvelis::layout {

namespace {

constexpr double cornerRadius = 0.3;  // inches, where there is room

std::vector<Rect> BoxesAt(const Graph& graph, const std::vector<Point>& centers) {
    std::vector<Rect> boxes;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        boxes.push_back(RectAround(centers[i], graph.boxes[i].width, graph.boxes[i].height));
    return boxes;
}

}  // namespace

Routing RouteLines(const Graph& graph, const std::vector<Point>& centers, const Style& style) {
    const std::vector<Rect> boxes = BoxesAt(graph, centers);
    const RouteRule rule = RuleOf(style.routeStyle);
    Ways ways = RouteOrthogonally(boxes, graph.lines, rule, style.lineGap);
    const Labels labels = PlaceLabels(boxes, graph.lines, ways.points);
    const bool curved = style.lineRouteExt == 2;
    if (curved) FitCurves(ways.points, boxes, cornerRadius);

    Routing routing;
    routing.crowded = ways.crowded + labels.astray;
    for (std::size_t i = 0; i < graph.lines.size(); ++i)
        routing.routes.push_back({std::move(ways.points[i]), curved, labels.middles[i]});
    return routing;
}

Placement RouteMakingRoom(const Graph& graph, std::vector<Point> centers, const Style& style) {
    Routing routing = RouteLines(graph, centers, style);
    return {std::move(centers), std::move(routing.routes)};
}

}  // namespace norvelis::layout
