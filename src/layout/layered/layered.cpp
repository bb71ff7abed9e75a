#include "layout/layered/layered.h"

#include <algorithm>
#include <limits>

#include "layout/geometry/corners.h"
#include "layout/geometry/obstacles.h"
#include "layout/layered/channel_routing.h"
#include "layout/layered/coordinates.h"
#include "layout/layered/grid.h"
#include "layout/layered/layer_splitting.h"
#include "layout/layered/layering.h"
#include "layout/layered/loops.h"
#include "layout/layered/trunks.h"

namespace norvelis::layout {

namespace {

/// The phases work with layers from top to bottom, y growing downwards; for layers from left to right the
/// graph is transposed before and back after.
Graph Transposed(Graph graph) {
    for (Box& box : graph.boxes) std::swap(box.width, box.height);
    for (Line& line : graph.lines) std::swap(line.labelWidth, line.labelHeight);
    return graph;
}

Placement DrawLayers(const Graph& graph, const Style& style, const Layers& layers) {
    Grid grid = MakeGrid(graph, layers, style);
    const std::vector<bool> trunks = BoxesWithTrunk(graph, style, grid);
    const std::vector<Ports> ports = AssignCoordinates(graph, style, trunks, grid);
    Placement placement = RouteThroughChannels(graph, style, trunks, grid, ports);
    RouteLoops(graph, style, placement);
    return placement;
}

/// How wide and high a drawing is.
Box SizeOf(const Graph& graph, const Placement& placement) {
    std::vector<Rect> areas;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        areas.push_back(RectAround(placement.centers[i], graph.boxes[i].width, graph.boxes[i].height));
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Route& route = placement.routes[k];
        for (const Point& point : route.points) areas.push_back(RectOf(point, point));
        areas.push_back(RectAround(route.label, graph.lines[k].labelWidth, graph.lines[k].labelHeight));
    }
    const Rect bounds = BoundsOf(areas);
    return {bounds.Width(), bounds.Height()};
}

/// Small drawings keep a layer for each level. Of larger ones wide layers are split as paper wants it, in a
/// few trials, each planned by what the one before came out like.
Placement PlaceTopDown(const Graph& graph, const Style& style, double ratio) {
    constexpr std::size_t kLeastBoxes = 30;
    constexpr int kTrials = 3;
    const Layers layers = LayersWithFewCrossings(graph);
    if (graph.boxes.size() < kLeastBoxes) return DrawLayers(graph, style, layers);
    const LayerSplitter splitter(graph, layers, style);
    Placement best;
    double least = std::numeric_limits<double>::infinity();
    Box stretch{1, 1};
    LayerSplitter::Plan last;
    for (int trial = 0; trial < kTrials; ++trial) {
        const LayerSplitter::Plan plan = splitter.PlanFor(ratio, stretch);
        if (plan == last) break;
        last = plan;
        Placement placement = DrawLayers(graph, style, splitter.Split(plan));
        const Box size = SizeOf(graph, placement);
        stretch = {size.width / plan.width, size.height / plan.height};
        const double onPaper = std::max(size.width, size.height * ratio);
        if (onPaper >= least) continue;
        least = onPaper;
        best = std::move(placement);
    }
    return best;
}

}  // namespace

Placement PlaceLayered(const Graph& graph, const Style& style) {
    const bool transposed = style.placeStyle == PlaceStyle::LeftToRight;
    Style transposedStyle = style;
    if (transposed) std::swap(transposedStyle.boxGapX, transposedStyle.boxGapY);
    Placement placement = transposed ? PlaceTopDown(Transposed(graph), transposedStyle, 1 / kPaperRatio)
                                     : PlaceTopDown(graph, style, kPaperRatio);
    const auto toPage = [&](Point& point) {
        point = transposed ? Point{point.y, -point.x} : Point{point.x, -point.y};
    };
    for (Point& center : placement.centers) toPage(center);
    for (Route& route : placement.routes) {
        for (Point& point : route.points) toPage(point);
        toPage(route.label);
        route.curved = style.IsCurved() && route.points.size() > 2;
        if (route.curved) route.points = RoundCorners(route.points, style.lineGap);
    }
    return placement;
}

}  // namespace norvelis::layout
