#include <algorithm>
#include <limits>

#include "drawing/layout/circular.h"
#include "drawing/layout/components.h"
#include "drawing/layout/graph.h"
#include "drawing/layout/layered.h"
#include "drawing/layout/packing.h"
#include "drawing/layout/radial.h"
#include "drawing/routing/route_style.h"
#include "drawing/routing/router.h"

namespace norvelis::layout {

namespace {

constexpr int radialStyle = 3, circularStyle = 6;

Placement PlaceComponent(const Graph& graph, const Style& style) {
    if (style.placeStyle == radialStyle) return RouteMakingRoom(graph, PlaceRadial(graph, style), style);
    if (style.placeStyle == circularStyle) return RouteMakingRoom(graph, PlaceCircular(graph, style), style);
    Placement placement = PlaceLayered(graph, style);
    if (RuleOf(style.routeStyle).family == RouteFamily::Straight)
        return RouteMakingRoom(graph, std::move(placement.centers), style);
    return placement;
}

/// The bounds of all that is drawn.
class Bounds {
  public:
    Bounds(const Graph& graph, const Placement& placement) {
        for (std::size_t i = 0; i < graph.boxes.size(); ++i)
            Add(placement.centers[i], graph.boxes[i].width, graph.boxes[i].height);
        for (std::size_t k = 0; k < graph.lines.size(); ++k) {
            const Route& route = placement.routes[k];
            for (const Point& point : route.points) Add(point, 0, 0);
            if (graph.lines[k].labelWidth > 0)
                Add(route.label, graph.lines[k].labelWidth, graph.lines[k].labelHeight);
        }
    }

    Point LowerLeft() const { return {x0_, y0_}; }
    Box Size() const { return {x1_ - x0_, y1_ - y0_}; }

  private:
    void Add(const Point& center, double width, double height) {
        x0_ = std::min(x0_, center.x - width / 2);
        y0_ = std::min(y0_, center.y - height / 2);
        x1_ = std::max(x1_, center.x + width / 2);
        y1_ = std::max(y1_, center.y + height / 2);
    }

    static constexpr double infinite = std::numeric_limits<double>::infinity();
    double x0_ = infinite, y0_ = infinite, x1_ = -infinite, y1_ = -infinite;
};

}  // namespace

Placement PlaceAndRoute(const Graph& graph, const Style& style) {
    const std::vector<Component> components = ComponentsOf(graph);
    std::vector<Placement> parts;
    std::vector<Box> sizes;
    std::vector<Point> origins;
    for (const Component& component : components) {
        parts.push_back(PlaceComponent(component.graph, style));
        const Bounds bounds(component.graph, parts.back());
        sizes.push_back(bounds.Size());
        origins.push_back(bounds.LowerLeft());
    }
    const std::vector<Point> corners = PackSideBySide(sizes, std::max(style.boxGapX, style.boxGapY));

    Placement whole;
    whole.centers.resize(graph.boxes.size());
    whole.routes.resize(graph.lines.size());
    for (std::size_t c = 0; c < components.size(); ++c) {
        const Point shift{corners[c].x - origins[c].x, corners[c].y - origins[c].y};
        const auto move = [&](Point& point) {
            point.x += shift.x;
            point.y += shift.y;
        };
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
