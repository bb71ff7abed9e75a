#include "layout/routing/router.h"

#include <cstddef>
#include <numeric>

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

// How far a curve reaches from its corner, in inches, where there is room.
constexpr double cornerRadius = 0.3;  // lines with right angles
constexpr double bendRadius = 2.0;    // straight lines around boxes

std::vector<Rect> BoxesAt(const Graph& graph, const std::vector<Point>& centers) {
    std::vector<Rect> boxes;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        boxes.push_back(RectAround(centers[i], graph.boxes[i].width, graph.boxes[i].height));
    return boxes;
}

std::vector<Route> Finish(const Graph& graph, const std::vector<Rect>& boxes, Points ways,
                          std::vector<Point> middles, bool curved, double radius) {
    if (curved) {
        std::vector<Rect> labels;
        for (std::size_t i = 0; i < graph.lines.size(); ++i)
            labels.push_back(RectAround(middles[i], graph.lines[i].labelWidth, graph.lines[i].labelHeight));
        FitCurves(ways, boxes, labels, radius);
    }
    std::vector<Route> routes;
    for (std::size_t i = 0; i < ways.size(); ++i) routes.push_back({std::move(ways[i]), curved, middles[i]});
    return routes;
}

std::vector<std::size_t> AllLines(const Graph& graph) {
    std::vector<std::size_t> all(graph.lines.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

/// Lines that run straight or around boxes, with their labels.
struct StraightLines {
    Points ways;
    std::vector<Point> labels;
    int doubtful = 0;  ///< Lines and labels that found no room.
};

StraightLines RouteStraightLines(const Graph& graph, const std::vector<Rect>& boxes, double lineGap) {
    Ways ways = RouteStraight(boxes, graph.lines, lineGap);
    StraightLines lines{std::move(ways.points), std::vector<Point>(graph.lines.size()), 0};
    NestBends(lines.ways, boxes, lineGap);
    SpreadPorts(lines.ways, graph.lines, boxes, lineGap);
    PlaceLabels(boxes, graph.lines, lines.ways, AllLines(graph), lines.labels);
    LeadAroundLabels(lines.ways, graph.lines, boxes, lines.labels);
    lines.doubtful = ways.crowded + DoubtfulLabels(graph.lines, lines.ways, lines.labels);
    return lines;
}

/// Spreads the boxes until lines and labels have room, or as far as it helps.
Placement DrawStraight(const Graph& graph, std::vector<Point> centers, const Style& style) {
    constexpr int mostAttempts = 5;
    constexpr double spread = 1.15;
    const int tolerated = static_cast<int>(graph.lines.size()) / 100;
    StraightLines best;
    std::vector<Point> bestCenters;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        StraightLines lines = RouteStraightLines(graph, BoxesAt(graph, centers), style.lineGap);
        if (attempt == 0 || lines.doubtful < best.doubtful) {
            best = std::move(lines);
            bestCenters = centers;
        }
        if (best.doubtful <= tolerated) break;
        for (Point& center : centers) center = center * spread;
    }
    std::vector<Route> routes = Finish(graph, BoxesAt(graph, bestCenters), std::move(best.ways),
                                       std::move(best.labels), style.lineRouteExt == 2, bendRadius);
    return {std::move(bestCenters), std::move(routes)};
}

/// Drops points on the way between their neighbours.
std::vector<Point> Corners(const std::vector<Point>& way) {
    std::vector<Point> corners;
    for (const Point& point : way) {
        if (!corners.empty() && corners.back() == point) continue;
        const std::size_t n = corners.size();
        if (n > 1 && ((corners[n - 2].x == corners[n - 1].x && corners[n - 1].x == point.x) ||
                      (corners[n - 2].y == corners[n - 1].y && corners[n - 1].y == point.y)))
            corners.pop_back();
        corners.push_back(point);
    }
    if (corners.size() < 2) return way;
    return corners;
}

FirstPiece FirstPieceOf(const std::vector<Point>& way) {
    if (LengthOf(way) == 0) return FirstPiece::Slanting;
    for (std::size_t i = 1; i < way.size(); ++i)
        if (way[i].x != way[i - 1].x && way[i].y != way[i - 1].y) return FirstPiece::Slanting;
    return way[0].x == way[1].x ? FirstPiece::Upright : FirstPiece::Level;
}

Sketch SketchWithRightAngles(const Graph& graph, std::vector<Rect> boxes, const Style& style) {
    const RouteRule rule = RuleOf(style.routeStyle);
    Sketch sketch{std::move(boxes), graph.lines, {}, {}, {}, rule.family == RouteFamily::Tree};
    for (const auto& way : RouteOrthogonally(sketch.boxes, graph.lines, rule, style.lineGap).points) {
        sketch.ways.push_back(Corners(way));
        sketch.firstPieces.push_back(FirstPieceOf(sketch.ways.back()));
    }
    sketch.labels.resize(graph.lines.size());
    return sketch;
}

Placement DrawWithRightAngles(const Graph& graph, const std::vector<Point>& centers, const Style& style) {
    const double squeeze = style.placeDepth == 2 ? 0.8 : style.placeDepth == 3 ? 0.88 : 0.85;
    const auto makeRoom = [&](Sketch& sketch, double by) {
        MakeRoom(sketch, style.boxGapX, style.boxGapY, style.lineGap, by);
    };
    // A first routing says where boxes must give way; with room, the second one has fewer bends.
    Sketch first = SketchWithRightAngles(graph, BoxesAt(graph, centers), style);
    makeRoom(first, squeeze);
    Sketch sketch = SketchWithRightAngles(graph, std::move(first.boxes), style);
    Untangle(sketch);
    ChooseLabelSpots(sketch);
    makeRoom(sketch, squeeze);
    std::vector<std::vector<char>> tried;
    std::vector<std::size_t> covered = CoveredLabels(sketch);
    constexpr int mostMoves = 4;
    for (int move = 0; move < mostMoves && !covered.empty() && MoveLabels(sketch, covered, tried); ++move) {
        makeRoom(sketch, 1);
        covered = CoveredLabels(sketch);
    }

    Placement placement;
    for (const Rect& box : sketch.boxes) placement.centers.push_back(box.Center());
    std::vector<Point> labels;
    for (std::size_t i = 0; i < graph.lines.size(); ++i) {
        labels.push_back(sketch.labels[i].piece >= 0 ? LabelMiddle(sketch, i) : Point{});
        if (sketch.labels[i].piece < 0) covered.push_back(i);
    }
    for (auto& way : sketch.ways) way = Corners(way);
    if (!covered.empty()) PlaceLabels(sketch.boxes, graph.lines, sketch.ways, covered, labels);
    placement.routes = Finish(graph, sketch.boxes, std::move(sketch.ways), std::move(labels),
                              style.lineRouteExt == 2, cornerRadius);
    return placement;
}

bool IsStraight(const Style& style) {
    return RuleOf(style.routeStyle).family == RouteFamily::Straight;
}

}  // namespace

std::vector<Route> RouteLines(const Graph& graph, const std::vector<Point>& centers, const Style& style) {
    const std::vector<Rect> boxes = BoxesAt(graph, centers);
    const bool curved = style.lineRouteExt == 2;
    if (IsStraight(style)) {
        StraightLines lines = RouteStraightLines(graph, boxes, style.lineGap);
        return Finish(graph, boxes, std::move(lines.ways), std::move(lines.labels), curved, bendRadius);
    }
    Ways ways = RouteOrthogonally(boxes, graph.lines, RuleOf(style.routeStyle), style.lineGap);
    std::vector<Point> labels(graph.lines.size());
    PlaceLabels(boxes, graph.lines, ways.points, AllLines(graph), labels);
    return Finish(graph, boxes, std::move(ways.points), std::move(labels), curved, cornerRadius);
}

Placement RouteMakingRoom(const Graph& graph, std::vector<Point> centers, const Style& style) {
    return IsStraight(style) ? DrawStraight(graph, std::move(centers), style)
                             : DrawWithRightAngles(graph, centers, style);
}

}  // namespace norvelis::layout
