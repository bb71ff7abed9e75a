#include <algorithm>

#include "base/geometry.h"
#include "layout/circular/circular.h"
#include "layout/graph/components.h"
#include "layout/graph/route_rule.h"
#include "layout/layered/layered.h"
#include "layout/packing.h"
#include "layout/place_and_route.h"
#include "layout/radial/radial.h"
#include "layout/routing/router.h"

namespace norvelis::layout {

namespace {

Placement PlaceComponent(const Graph& graph, const Style& style) {
    if (style.placeStyle == PlaceStyle::Radial)
        return RouteMakingSpace(graph, PlaceRadial(graph, style), style);
    if (style.placeStyle == PlaceStyle::Circular)
        return RouteMakingSpace(graph, PlaceCircular(graph, style), style);
    Placement placement = PlaceLayered(graph, style);
    if (RuleOf(style.routeStyle).family == RouteFamily::Straight)
        return RouteMakingSpace(graph, std::move(placement.centers), style);
    return placement;
}

/// All that is drawn, slanting lines as short segments.
std::vector<Rect> AreasOf(const Graph& graph, const Placement& placement) {
    constexpr double kSegment = 0.5;
    std::vector<Rect> areas;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        areas.push_back(RectAround(placement.centers[i], graph.boxes[i].width, graph.boxes[i].height));
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Route& route = placement.routes[k];
        for (std::size_t p = 1; p < route.points.size(); ++p) {
            const Point a = route.points[p - 1], b = route.points[p];
            const int parts = a.x == b.x || a.y == b.y ? 1 : 1 + static_cast<int>(Length(b - a) / kSegment);
            for (int i = 0; i < parts; ++i)
                areas.push_back(RectOf(Between(a, b, static_cast<double>(i) / parts),
                                       Between(a, b, static_cast<double>(i + 1) / parts)));
        }
        if (graph.lines[k].labelWidth > 0)
            areas.push_back(RectAround(route.label, graph.lines[k].labelWidth, graph.lines[k].labelHeight));
    }
    return areas;
}

}  // namespace

Placement PlaceAndRoute(const Graph& graph, const Style& style) {
    const std::vector<Component> components = ComponentsOf(graph);
    std::vector<Placement> parts;
    std::vector<std::vector<Rect>> areas;
    for (const Component& component : components) {
        parts.push_back(PlaceComponent(component.graph, style));
        areas.push_back(AreasOf(component.graph, parts.back()));
    }
    const double apart = graph.lines.empty() ? 1 : 2;  // a reader sees where one part ends
    const std::vector<Point> moves = PackParts(areas, apart * std::max(style.boxGapX, style.boxGapY));

    Placement whole;
    whole.centers.resize(graph.boxes.size());
    whole.routes.resize(graph.lines.size());
    for (std::size_t c = 0; c < components.size(); ++c) {
        const auto move = [&](Point& point) { point = point + moves[c]; };
        for (std::size_t i = 0; i < components[c].boxes.size(); ++i) {
            Point& center = whole.centers[components[c].boxes[i]];
            center = parts[c].centers[i];
            move(center);
        }
        for (std::size_t k = 0; k < components[c].lines.size(); ++k) {
            Route& route = whole.routes[components[c].lines[k]];
            route = std::move(parts[c].routes[k]);
            for (Point& point : route.points) move(point);
            move(route.label);
        }
    }
    return whole;
}

}  // namespace norvelis::layout
