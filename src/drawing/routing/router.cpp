#include "drawing/routing/router.h"

#include <cstddef>

#include "drawing/routing/curves.h"
#include "drawing/routing/labels.h"
#include "drawing/routing/orthogonal.h"
#include "drawing/routing/ports.h"
#include "drawing/routing/straight.h"

namespace norvelis::layout {

namespace {

// How far a curve reaches from its corner, in inches, where there is room.
constexpr double cornerRadius = 0.3;  // lines on tracks leave them no farther than this
constexpr double bendRadius = 2.0;    // straight lines around boxes

constexpr int mostAttempts = 3;  // to make room
constexpr double spread = 1.2;

/// A few crowded lines in a hundred are better than a page of twice the size.
bool IsTooCrowded(const Routing& routing) {
    return routing.crowded > static_cast<int>(routing.routes.size()) / 50;
}

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
    const bool straight = rule.family == RouteFamily::Straight;
    Ways ways = straight ? RouteStraight(boxes, graph.lines, style.lineGap)
                         : RouteOrthogonally(boxes, graph.lines, rule, style.lineGap);
    if (straight) SpreadPorts(ways.points, graph.lines, boxes, style.lineGap);
    const Labels labels = PlaceLabels(boxes, graph.lines, ways.points);
    const bool curved = style.lineRouteExt == 2;
    if (curved) FitCurves(ways.points, boxes, straight ? bendRadius : cornerRadius);

    Routing routing;
    routing.crowded = ways.crowded + labels.astray;
    for (std::size_t i = 0; i < graph.lines.size(); ++i)
        routing.routes.push_back({std::move(ways.points[i]), curved, labels.middles[i]});
    return routing;
}

Placement RouteMakingRoom(const Graph& graph, std::vector<Point> centers, const Style& style) {
    Routing routing = RouteLines(graph, centers, style);
    for (int attempt = 0; attempt < mostAttempts && IsTooCrowded(routing); ++attempt) {
        for (Point& center : centers) center = center * spread;
        routing = RouteLines(graph, centers, style);
    }
    return {std::move(centers), std::move(routing.routes)};
}

}  // namespace norvelis::layout
