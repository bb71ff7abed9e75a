#include "layout/routing/router.h"

#include <cstddef>
#include <numeric>

#include "layout/geometry/corners.h"
#include "layout/graph/notes.h"
#include "layout/labels/label_spots.h"
#include "layout/labels/labels.h"
#include "layout/routing/curves.h"
#include "layout/routing/detours.h"
#include "layout/routing/nesting.h"
#include "layout/routing/orthogonal.h"
#include "layout/routing/ports.h"
#include "layout/routing/straight.h"
#include "layout/routing/untangle.h"
#include "layout/spacing/spacing.h"

namespace norvelis::layout {

namespace {

using Points = std::vector<std::vector<Point>>;

// How far a curve reaches from its corner, in inches, where there is space.
constexpr double kCornerRadius = 0.3;  // lines with right angles
constexpr double kBendRadius = 2.0;    // straight lines around boxes

std::vector<Route> Finish(const Graph& graph, const std::vector<Rect>& boxes, Points paths,
                          std::vector<Point> middles, bool curved, double radius) {
    if (curved) {
        std::vector<Rect> labels;
        for (std::size_t i = 0; i < graph.lines.size(); ++i)
            labels.push_back(RectAround(middles[i], graph.lines[i].labelWidth, graph.lines[i].labelHeight));
        FitCurves(paths, boxes, labels, radius);
    }
    std::vector<Route> routes;
    for (std::size_t i = 0; i < paths.size(); ++i)
        routes.push_back({std::move(paths[i]), curved, middles[i]});
    return routes;
}

std::vector<std::size_t> AllLines(const Graph& graph) {
    std::vector<std::size_t> all(graph.lines.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

/// Lines that run straight or around boxes, with their labels.
struct StraightLines {
    Points paths;
    std::vector<Point> labels;
    int doubtful = 0;  ///< Lines and labels that found no space.
};

StraightLines RouteStraightLines(const Graph& graph, const std::vector<Rect>& boxes, double lineGap) {
    LinePaths paths = RouteStraight(boxes, graph.lines, lineGap);
    StraightLines lines{std::move(paths.points), std::vector<Point>(graph.lines.size()), 0};
    NestBends(lines.paths, boxes, lineGap);
    SpreadPorts(lines.paths, graph.lines, boxes, lineGap);
    PlaceLabels(boxes, graph.lines, lines.paths, AllLines(graph), lines.labels);
    LeadAroundLabels(lines.paths, graph.lines, boxes, lines.labels);
    lines.doubtful = paths.crowded + DoubtfulLabels(graph.lines, lines.paths, lines.labels);
    return lines;
}

/// Spreads the boxes until lines and labels have space, or as far as it helps.
Placement DrawStraight(const Graph& graph, std::vector<Point> centers, const Style& style) {
    constexpr int kMostAttempts = 5;
    constexpr double kSpread = 1.15;
    const int tolerated = static_cast<int>(graph.lines.size()) / 100;
    StraightLines best;
    std::vector<Point> bestCenters;
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        StraightLines lines = RouteStraightLines(graph, BoxesAndNotes(graph, centers), style.lineGap);
        if (attempt == 0 || lines.doubtful < best.doubtful) {
            best = std::move(lines);
            bestCenters = centers;
        }
        if (best.doubtful <= tolerated) break;
        for (Point& center : centers) center = center * kSpread;
    }
    std::vector<Route> routes = Finish(graph, BoxesAndNotes(graph, bestCenters), std::move(best.paths),
                                       std::move(best.labels), style.IsCurved(), kBendRadius);
    return {std::move(bestCenters), std::move(routes)};
}

FirstSegment FirstSegmentOf(const std::vector<Point>& path) {
    if (LengthOf(path) == 0) return FirstSegment::Slanting;
    for (std::size_t i = 1; i < path.size(); ++i)
        if (path[i].x != path[i - 1].x && path[i].y != path[i - 1].y) return FirstSegment::Slanting;
    return path[0].x == path[1].x ? FirstSegment::Vertical : FirstSegment::Horizontal;
}

Sketch SketchWithRightAngles(const Graph& graph, std::vector<Rect> boxes, const Style& style) {
    const RouteRule rule = RuleOf(style.routeStyle);
    Sketch sketch{std::move(boxes),    graph.lines, {}, {}, {}, rule.family == RouteFamily::Tree,
                  BoxesWithNote(graph)};
    for (const auto& path : RouteOrthogonally(sketch.boxes, graph.lines, rule, style.lineGap).points) {
        sketch.paths.push_back(CornersOf(path));
        sketch.firstSegments.push_back(FirstSegmentOf(sketch.paths.back()));
    }
    sketch.labels.resize(graph.lines.size());
    return sketch;
}

/// How far a drawing shrinks towards its middle, as far as distances allow.
double SqueezeAt(PlaceDepth depth) {
    return depth == PlaceDepth::Deep ? 0.8 : depth == PlaceDepth::Shallow ? 0.88 : 0.85;
}

Placement DrawWithRightAngles(const Graph& graph, const std::vector<Point>& centers, const Style& style) {
    const double squeeze = SqueezeAt(style.placeDepth);
    const auto makeSpace = [&](Sketch& sketch, double by) {
        MakeSpace(sketch, style.boxGapX, style.boxGapY, style.lineGap, by);
    };
    // A first routing says where boxes must move apart; then a second one has fewer bends.
    Sketch first = SketchWithRightAngles(graph, BoxesAndNotes(graph, centers), style);
    makeSpace(first, squeeze);
    Sketch sketch = SketchWithRightAngles(graph, std::move(first.boxes), style);
    Untangle(sketch);
    ChooseLabelSpots(sketch);
    makeSpace(sketch, squeeze);
    std::vector<std::vector<char>> tried;
    std::vector<std::size_t> covered = CoveredLabels(sketch);
    constexpr int kMostMoves = 4;
    for (int move = 0; move < kMostMoves && !covered.empty() && MoveLabels(sketch, covered, tried); ++move) {
        makeSpace(sketch, 1);
        covered = CoveredLabels(sketch);
    }

    Placement placement;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        placement.centers.push_back(sketch.boxes[i].Center());
    std::vector<Point> labels;
    for (std::size_t i = 0; i < graph.lines.size(); ++i) {
        labels.push_back(sketch.labels[i].segment >= 0 ? LabelMiddle(sketch, i) : Point{});
        if (sketch.labels[i].segment < 0) covered.push_back(i);
    }
    for (auto& path : sketch.paths) path = CornersOf(path);
    if (!covered.empty()) PlaceLabels(sketch.boxes, graph.lines, sketch.paths, covered, labels);
    placement.routes = Finish(graph, sketch.boxes, std::move(sketch.paths), std::move(labels),
                              style.IsCurved(), kCornerRadius);
    return placement;
}

}  // namespace

Placement RouteMakingSpace(const Graph& graph, std::vector<Point> centers, const Style& style) {
    const bool straight = RuleOf(style.routeStyle).family == RouteFamily::Straight;
    return straight ? DrawStraight(graph, std::move(centers), style)
                    : DrawWithRightAngles(graph, centers, style);
}

}  // namespace norvelis::layout
