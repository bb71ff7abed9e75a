#include "layout/layered/layered.h"

#include <algorithm>
#include <cmath>

#include "layout/geometry/corners.h"
#include "layout/geometry/obstacles.h"
#include "layout/graph/notes.h"
#include "layout/layered/channel_routing.h"
#include "layout/layered/coordinates.h"
#include "layout/layered/former_layers.h"
#include "layout/layered/grid.h"
#include "layout/layered/layer_splitting.h"
#include "layout/layered/layering.h"
#include "layout/layered/loops.h"
#include "layout/layered/trunks.h"

namespace norvelis::layout {

namespace {

/// The phases work with layers from top to bottom, y growing downwards; for layers from left to right the
/// graph is transposed before and back after. A note above its box comes to its left.
Graph Transposed(Graph graph) {
    for (Box& box : graph.boxes) {
        std::swap(box.width, box.height);
        std::swap(box.noteWidth, box.noteHeight);
        if (box.noteSide == NoteSide::Above) box.noteSide = NoteSide::Left;
    }
    for (Line& line : graph.lines) std::swap(line.labelWidth, line.labelHeight);
    return graph;
}

/// Places of the page as the phases see them.
FormerPlaces OffPage(FormerPlaces former, bool transposed) {
    const auto offPage = [&](Point& point) {
        point = transposed ? Point{-point.y, point.x} : Point{point.x, -point.y};
    };
    for (auto& center : former.centers)
        if (center) offPage(*center);
    for (auto& route : former.routes)
        for (Point& point : route) offPage(point);
    return former;
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
    std::vector<Rect> areas = BoxesAndNotes(graph, placement.centers);
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Route& route = placement.routes[k];
        for (const Point& point : route.points) areas.push_back(RectOf(point, point));
        areas.push_back(RectAround(route.label, graph.lines[k].labelWidth, graph.lines[k].labelHeight));
    }
    const Rect bounds = BoundsOf(areas);
    return {bounds.Width(), bounds.Height()};
}

/// The paper that a drawing is for, seen from the top down.
struct Paper {
    double ratio;     ///< Of its width to its height.
    double mostHigh;  ///< As many times as high as wide may a page be that is not a band.
};
constexpr Paper kAcross{kPaperRatio, 1 / 0.7}, kUpright{1 / kPaperRatio, 2.2};

struct Drawing {
    Placement placement;
    Box size;
    double OnPaper(const Paper& paper) const { return std::max(size.width, size.height * paper.ratio); }
};

/// Wide layers are split as paper wants it, in a few trials, each planned by what the one before came out
/// like.
Drawing DrawSplit(const Graph& graph, const Style& style, const Paper& paper, const Layers& layers) {
    constexpr int kTrials = 3;
    const LayerSplitter splitter(graph, layers, style);
    Drawing best;
    Box stretch{1, 1};
    LayerSplitter::Plan last;
    for (int trial = 0; trial < kTrials; ++trial) {
        const LayerSplitter::Plan plan = splitter.PlanFor(paper.ratio, stretch);
        if (plan == last) break;
        last = plan;
        Drawing drawing{DrawLayers(graph, style, splitter.Split(plan)), {}};
        drawing.size = SizeOf(graph, drawing.placement);
        stretch = {drawing.size.width / plan.width, drawing.size.height / plan.height};
        if (trial == 0 || drawing.OnPaper(paper) < best.OnPaper(paper)) best = std::move(drawing);
    }
    return best;
}

/// The drawing of a graph whose layers make the page a band is done again on fewer, as few as that needs.
void AvoidBand(const Graph& graph, const Style& style, const Paper& paper, Layers layers, Drawing& best) {
    constexpr int kTrials = 3, kFewest = 2;
    constexpr double kBelow = 0.85;  // the limit
    double high = best.size.height / best.size.width;
    for (int trial = 0; trial < kTrials && high > paper.mostHigh; ++trial) {
        const auto deep = static_cast<double>(layers.order.size());
        const int most = static_cast<int>(deep * std::sqrt(kBelow * paper.mostHigh / high));
        Layers shallow = ShallowLayers(graph, layers, std::max(kFewest, most));
        if (shallow.order.size() >= layers.order.size()) break;
        layers = std::move(shallow);
        Drawing drawing = DrawSplit(graph, style, paper, layers);
        high = drawing.size.height / drawing.size.width;
        if (drawing.OnPaper(paper) < best.OnPaper(paper)) best = std::move(drawing);
    }
}

/// Small drawings keep a layer for each level.
Placement PlaceTopDown(const Graph& graph, const Style& style, const Paper& paper, PageShare share,
                       const FormerPlaces& former) {
    constexpr std::size_t kLeastBoxes = 30;
    if (!former.centers.empty()) return DrawLayers(graph, style, LayersAsBefore(graph, former));
    const Layers layers = LayersWithFewCrossings(graph);
    if (graph.boxes.size() < kLeastBoxes) return DrawLayers(graph, style, layers);
    Drawing drawing = DrawSplit(graph, style, paper, layers);
    if (share == PageShare::Most) AvoidBand(graph, style, paper, layers, drawing);
    return drawing.placement;
}

}  // namespace

Placement PlaceLayered(const Graph& graph, const Style& style, PageShare share, const FormerPlaces& former) {
    const bool transposed = style.placeStyle == PlaceStyle::LeftToRight;
    Style transposedStyle = style;
    if (transposed) std::swap(transposedStyle.boxGapX, transposedStyle.boxGapY);
    const FormerPlaces before = OffPage(former, transposed);
    Placement placement = transposed
                              ? PlaceTopDown(Transposed(graph), transposedStyle, kUpright, share, before)
                              : PlaceTopDown(graph, style, kAcross, share, before);
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
