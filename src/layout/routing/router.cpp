#include "layout/routing/router.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>

#include "layout/geometry/corners.h"
#include "layout/geometry/obstacles.h"
#include "layout/graph/notes.h"
#include "layout/labels/label_spots.h"
#include "layout/labels/labels.h"
#include "layout/routing/curves.h"
#include "layout/routing/detours.h"
#include "layout/routing/exchange.h"
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

/// Lines and labels around boxes that have their places.
struct Attempt {
    std::vector<Point> centers;
    Points paths;
    std::vector<Point> labels;
    std::vector<std::size_t> unclear;  ///< Lines whose labels found no space.
    int crowded = 0;                   ///< Segments that found none.

    std::size_t Doubtful() const { return unclear.size() + static_cast<std::size_t>(crowded); }
};

/// What a label that found none gets on each side.
Point SpaceAround(const Line& line) {
    return {line.labelWidth / 4, line.labelHeight};
}

/// The boxes farther from the middle lines of all labels without space, so that those have some; so many
/// times what one asks for.
std::vector<Point> SpreadAroundLabels(const Graph& graph, const Attempt& attempt, int times) {
    constexpr double kMost = 0.15;  // of the page, however many labels there are
    const Rect page = BoundsOf(BoxesAndNotes(graph, attempt.centers));
    Point sum;
    for (const std::size_t line : attempt.unclear) sum = sum + SpaceAround(graph.lines[line]) * (2.0 * times);
    const auto share = [&](double wished, double size) {
        return std::min(1.0, kMost * size / std::max(wished, 1e-9));
    };
    const double shareX = share(sum.x, page.Width()), shareY = share(sum.y, page.Height());
    std::vector<Point> moved = attempt.centers;
    for (const std::size_t line : attempt.unclear) {
        const Point label = attempt.labels[line];
        const Point space = SpaceAround(graph.lines[line]) * times;
        const double x = shareX * space.x, y = shareY * space.y;
        for (std::size_t i = 0; i < moved.size(); ++i) {
            const Point center = attempt.centers[i];
            moved[i] = moved[i] + Point{center.x < label.x ? -x : x, center.y < label.y ? -y : y};
        }
    }
    return moved;
}

/// Draws until all labels and lines have space, each time with more where there was none, and takes the best.
/// Boxes that stay where they are make no more space for a few labels that found none then, either. Pairs of
/// lines, which may all cross, say how much an attempt costs: where there are thousands of lines, a few
/// labels more that find no space are worth less than the time.
template <typename F>
Attempt BestOf(const Graph& graph, std::vector<Point> centers, Draws draws, F&& draw) {
    constexpr int kMostAttempts = 8, kMostInVain = 3;
    constexpr double kWorthIt = 0.8;
    const double spread = draws == Draws::Together ? 1.15 : 1.05;
    const std::size_t tolerated = graph.lines.size() / (draws == Draws::Together ? 2000 : 20);
    constexpr std::size_t kManyDoubtful = 100;
    constexpr std::size_t kMostPairs = 16'000'000;  // in all attempts; two there are always
    const std::size_t pairs = graph.lines.size() * graph.lines.size();
    Attempt best;
    for (int number = 0, inVain = 0; number < kMostAttempts && inVain < kMostInVain; ++number) {
        Attempt attempt = draw(centers, number);
        centers = SpreadAroundLabels(graph, attempt, number + 1);
        if (attempt.crowded > 0)
            for (Point& center : centers) center = center * spread;
        const auto doubtful = static_cast<double>(attempt.Doubtful());
        const bool isHopeless = attempt.Doubtful() > std::max(kManyDoubtful, graph.lines.size() / 20);
        const bool isWorthIt = number == 0 || doubtful <= kWorthIt * static_cast<double>(best.Doubtful());
        inVain = isWorthIt ? 0 : isHopeless ? kMostInVain : inVain + 1;
        if (number == 0 || attempt.Doubtful() < best.Doubtful()) best = std::move(attempt);
        if (best.Doubtful() <= tolerated) break;
        const auto attempts = static_cast<std::size_t>(number) + 1;
        if (attempts > 1 && attempts * pairs > kMostPairs) break;
    }
    return best;
}

Attempt DrawStraight(const Graph& graph, const std::vector<Point>& centers, double lineGap) {
    const std::vector<Rect> boxes = BoxesAndNotes(graph, centers);
    LinePaths paths = RouteStraight(boxes, graph.lines, lineGap);
    Attempt drawn{
        centers, std::move(paths.points), std::vector<Point>(graph.lines.size()), {}, paths.crowded};
    NestBends(drawn.paths, boxes, lineGap);
    SpreadPorts(drawn.paths, graph.lines, boxes, lineGap);
    ExchangePieces(drawn.paths, graph.lines, boxes, lineGap, Turns::Slanting);
    PlaceLabels(boxes, graph.lines, drawn.paths, AllLines(graph), drawn.labels);
    ClearLabels(boxes, graph.lines, drawn.paths, drawn.labels);
    LeadAroundLabels(drawn.paths, graph.lines, boxes, drawn.labels);
    drawn.unclear = ClearLabels(boxes, graph.lines, drawn.paths, drawn.labels);
    return drawn;
}

/// Segments may have no length, but for those of paths without any.
FirstSegment FirstSegmentOf(const std::vector<Point>& path) {
    std::optional<FirstSegment> first;
    for (std::size_t i = 1; i < path.size(); ++i) {
        if (path[i] == path[i - 1]) continue;
        if (path[i].x != path[i - 1].x && path[i].y != path[i - 1].y) return FirstSegment::Slanting;
        const bool isFirstVertical = (path[i].x == path[i - 1].x) == (i % 2 == 1);
        if (!first) first = isFirstVertical ? FirstSegment::Vertical : FirstSegment::Horizontal;
    }
    return first.value_or(FirstSegment::Slanting);
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

std::size_t PointsIn(const Points& paths) {
    std::size_t count = 0;
    for (const auto& path : paths) count += path.size();
    return count;
}

/// Lines exchange pieces, get space, and exchange what they can then.
template <typename F>
void ExchangePieces(Sketch& sketch, double lineGap, F&& makeSpace) {
    constexpr int kLeastTimes = 2;
    constexpr std::size_t kManyLines = 2000;  // space for so many takes longer than all the rest
    const int mostTimes = sketch.lines.size() > kManyLines ? kLeastTimes : 4;
    constexpr std::size_t kMostPoints = 4;  // to one before
    const std::size_t before = PointsIn(sketch.paths);
    for (int times = 1;; ++times) {
        const Exchanged exchanged =
            ExchangePieces(sketch.paths, sketch.lines, sketch.boxes, lineGap, Turns::RightAngled);
        if (exchanged == Exchanged::None) return;
        for (std::size_t line = 0; line < sketch.paths.size(); ++line)
            sketch.firstSegments[line] = FirstSegmentOf(sketch.paths[line]);
        if (times == mostTimes || (times >= kLeastTimes && exchanged == Exchanged::All)) return;
        if (PointsIn(sketch.paths) > kMostPoints * before) return;
        makeSpace();
    }
}

/// How far a drawing shrinks towards its middle, as far as distances allow.
double SqueezeAt(PlaceDepth depth) {
    return depth == PlaceDepth::Deep ? 0.8 : depth == PlaceDepth::Shallow ? 0.88 : 0.85;
}

enum class Pieces { Exchanged, Kept };

/// Lines with right angles and their labels, with the space that they need.
Sketch SketchWithSpace(const Graph& graph, const std::vector<Point>& centers, const Style& style,
                       double squeeze, Pieces pieces) {
    const auto makeSpace = [&](Sketch& sketch, double by) {
        MakeSpace(sketch, style.boxGapX, style.boxGapY, style.lineGap, by);
    };
    // A first routing says where boxes must move apart; then a second one has fewer bends.
    Sketch first = SketchWithRightAngles(graph, BoxesAndNotes(graph, centers), style);
    makeSpace(first, squeeze);
    Sketch sketch = SketchWithRightAngles(graph, std::move(first.boxes), style);
    Untangle(sketch);
    if (pieces == Pieces::Exchanged)
        ExchangePieces(sketch, style.lineGap, [&] { makeSpace(sketch, squeeze); });
    ChooseLabelSpots(sketch);
    makeSpace(sketch, squeeze);
    std::vector<std::vector<char>> tried;
    std::vector<std::size_t> covered = CoveredLabels(sketch);
    constexpr int kMostMoves = 4;
    for (int move = 0; move < kMostMoves && !covered.empty() && MoveLabels(sketch, covered, tried); ++move) {
        makeSpace(sketch, 1);
        covered = CoveredLabels(sketch);
    }
    return sketch;
}

bool KeepsOffBoxes(const Sketch& sketch) {
    constexpr double kTouch = 1e-6;
    const Obstacles boxes(sketch.boxes);
    return std::ranges::all_of(sketch.paths, [&](const std::vector<Point>& path) {
        for (std::size_t i = 1; i < path.size(); ++i)
            if (boxes.Bar(path[i - 1], path[i], -kTouch, -1, -1)) return false;
        return true;
    });
}

Attempt DrawWithRightAngles(const Graph& graph, const std::vector<Point>& centers, const Style& style,
                            double squeeze) {
    Sketch sketch = SketchWithSpace(graph, centers, style, squeeze, Pieces::Exchanged);
    // Lines that exchanged many pieces may ask for space that cannot be had, and end up in a box.
    if (!KeepsOffBoxes(sketch)) sketch = SketchWithSpace(graph, centers, style, squeeze, Pieces::Kept);
    std::vector<std::size_t> covered = CoveredLabels(sketch);
    Attempt drawn;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) drawn.centers.push_back(sketch.boxes[i].Center());
    for (std::size_t i = 0; i < graph.lines.size(); ++i) {
        drawn.labels.push_back(sketch.labels[i].segment >= 0 ? LabelMiddle(sketch, i) : Point{});
        if (sketch.labels[i].segment < 0) covered.push_back(i);
    }
    for (const auto& path : sketch.paths) drawn.paths.push_back(CornersOf(path));
    if (!covered.empty()) PlaceLabels(sketch.boxes, graph.lines, drawn.paths, covered, drawn.labels);
    drawn.unclear = ClearLabels(sketch.boxes, graph.lines, drawn.paths, drawn.labels);
    return drawn;
}

}  // namespace

Placement RouteMakingSpace(const Graph& graph, std::vector<Point> centers, const Style& style, Draws draws) {
    const bool straight = RuleOf(style.routeStyle).family == RouteFamily::Straight;
    const auto squeezeOf = [&](int number) {
        // What was drawn together once keeps the space that it got since.
        return number == 0 && draws == Draws::Together ? SqueezeAt(style.placeDepth) : 1;
    };
    const auto draw = [&](const std::vector<Point>& from, int number) {
        return straight ? DrawStraight(graph, from, style.lineGap)
                        : DrawWithRightAngles(graph, from, style, squeezeOf(number));
    };
    Attempt best = BestOf(graph, std::move(centers), draws, draw);
    std::vector<Route> routes =
        Finish(graph, BoxesAndNotes(graph, best.centers), std::move(best.paths), std::move(best.labels),
               style.IsCurved(), straight ? kBendRadius : kCornerRadius);
    return {std::move(best.centers), std::move(routes)};
}

}  // namespace norvelis::layout
