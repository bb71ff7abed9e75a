#include <algorithm>

#include "base/geometry.h"
#include "layout/blocks/leaf_blocks.h"
#include "layout/circular/circular.h"
#include "layout/geometry/crossings.h"
#include "layout/geometry/obstacles.h"
#include "layout/graph/components.h"
#include "layout/graph/notes.h"
#include "layout/graph/reach.h"
#include "layout/graph/route_rule.h"
#include "layout/layered/layered.h"
#include "layout/packing.h"
#include "layout/place_and_route.h"
#include "layout/radial/radial.h"
#include "layout/rings/former_centers.h"
#include "layout/rings/gaps.h"
#include "layout/rings/note_sides.h"
#include "layout/routing/router.h"
#include "layout/spacing/spacing.h"

namespace norvelis::layout {

namespace {

bool HasCrossings(const Placement& placement) {
    std::vector<std::vector<Point>> paths;
    for (const Route& route : placement.routes) paths.push_back(route.points);
    return !CrossingsOf(paths).empty();
}

/// The scale at which the boxes fit on a sheet of A0; 1 where there is space to spare.
double ScaleOnA0(const Graph& graph, const Placement& placement) {
    constexpr double kLong = 46.81, kShort = 33.11;  // inches
    std::vector<Rect> boxes;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        boxes.push_back(RectAround(placement.centers[i], graph.boxes[i].width, graph.boxes[i].height));
    const Rect page = BoundsOf(boxes);
    const double longer = std::max({page.Width(), page.Height(), 1e-9}),
                 shorter = std::max(std::min(page.Width(), page.Height()), 1e-9);
    return std::min({1.0, kLong / longer, kShort / shorter});
}

/// Whether the connected graph is a tree when nobody looks at the direction of lines.
bool IsTree(const Graph& graph) {
    return graph.lines.size() + 1 == graph.boxes.size();
}

/// A tree in layers under the box with the most reach, whatever the direction of its lines: none cross.
Placement PlaceTree(const Graph& graph, const Style& style, const FormerPlaces& former) {
    const Neighbours neighbours = NeighboursOf(graph);
    const int root = MostReach(neighbours);
    std::vector<int> walk{root}, depth(graph.boxes.size(), -1);
    depth[static_cast<std::size_t>(root)] = 0;
    for (std::size_t i = 0; i < walk.size(); ++i) {
        const auto box = static_cast<std::size_t>(walk[i]);
        for (const int other : neighbours[box]) {
            if (depth[static_cast<std::size_t>(other)] >= 0) continue;
            depth[static_cast<std::size_t>(other)] = depth[box] + 1;
            walk.push_back(other);
        }
    }
    Graph downwards = graph;
    const auto isUpwards = [&](const Line& line) {
        return depth[static_cast<std::size_t>(line.from)] > depth[static_cast<std::size_t>(line.to)];
    };
    for (Line& line : downwards.lines)
        if (isUpwards(line)) std::swap(line.from, line.to);
    Placement placement = PlaceLayered(downwards, style, PageShare::Most, former);
    for (std::size_t k = 0; k < graph.lines.size(); ++k)
        if (isUpwards(graph.lines[k]))
            std::reverse(placement.routes[k].points.begin(), placement.routes[k].points.end());
    return placement;
}

/// How large boxes come out on a sheet of A-paper on its long side, seen relatively. Lines and labels between
/// them will make them higher.
double SizeOnPaper(const Rect& boxes, const Style& style) {
    const double higher = RuleOf(style.routeStyle).family == RouteFamily::Straight ? 1.0 : 1.4;
    return 1 / std::max({boxes.Width(), boxes.Height() * kPaperRatio * higher, 1e-9});
}

/// Rings give each box the space of the largest: beside blocks of leaves the others move together. What is
/// stretched before is less high then, since fewer boxes are above each other.
std::vector<Point> DrawnTogether(const Graph& graph, const std::vector<Point>& centers, const Style& style) {
    constexpr int kRounds = 12;  // of small steps, so that neither width nor height is taken first
    constexpr double kSqueeze = 0.9;
    const Gaps gaps = LeastGaps(graph, style);
    std::vector<Point> best;
    double bestSize = 0;
    for (const double stretch : {1.0, 1.3, 1.6, 2.0, 2.5, 3.2, 4.0}) {
        std::vector<Rect> boxes;
        for (std::size_t i = 0; i < centers.size(); ++i)
            boxes.push_back(RectAround({centers[i].x * stretch, centers[i].y}, graph.boxes[i].width,
                                       graph.boxes[i].height));
        for (int round = 0; round < kRounds; ++round) SpreadBoxes(boxes, gaps.x, gaps.y, kSqueeze);
        const double size = SizeOnPaper(BoundsOf(boxes), style);
        if (size <= bestSize) continue;
        bestSize = size;
        best.clear();
        for (const Rect& box : boxes) best.push_back(box.Center());
    }
    return best;
}

Placement PlaceOnRings(Graph graph, const Style& style, bool hasBlocks) {
    const Graph given = graph;
    std::vector<Point> centers =
        style.placeStyle == PlaceStyle::Radial ? PlaceRadial(graph, style) : PlaceCircular(graph, style);
    if (hasBlocks) centers = DrawnTogether(graph, centers, style);
    MakeRoomForNotes(graph, style.boxGapX, style.boxGapY, centers);
    Placement placement = RouteMakingSpace(graph, std::move(centers), style);
    placement.noteSides = NoteSidesOf(graph);
    if (!IsTree(graph)) return placement;
    const double scale = ScaleOnA0(graph, placement);
    const bool hasCrossings = HasCrossings(placement);
    if (scale == 1 && !hasCrossings) return placement;
    Placement inLayers = PlaceTree(given, style, {});
    inLayers.noteSides = NoteSidesOf(given);
    return hasCrossings || ScaleOnA0(given, inLayers) > scale ? inLayers : placement;
}

bool IsOnRings(const Style& style) {
    return style.placeStyle == PlaceStyle::Radial || style.placeStyle == PlaceStyle::Circular;
}

bool HasStraightLines(const Style& style) {
    return RuleOf(style.routeStyle).family == RouteFamily::Straight;
}

Placement PlaceFolded(const Graph& graph, const Style& style, bool hasBlocks, PageShare share) {
    const bool onRings = IsOnRings(style), straight = HasStraightLines(style);
    // Two boxes make no ring, and all sets between them are side by side in layers.
    if (onRings && (straight || graph.boxes.size() > 2)) return PlaceOnRings(graph, style, hasBlocks);
    Placement placement = PlaceLayered(graph, style, share);
    if (straight) placement = RouteMakingSpace(graph, std::move(placement.centers), style);
    placement.noteSides = NoteSidesOf(graph);
    return placement;
}

/// The same with the boxes where they were: layers by their rows and order, all else by their centers.
Placement PlaceFoldedAsBefore(Graph graph, const Style& style, const FormerPlaces& former, PageShare share) {
    const auto withNotes = [&](Placement placement) {
        placement.noteSides = NoteSidesOf(graph);
        return placement;
    };
    const bool onRings = IsOnRings(style), straight = HasStraightLines(style);
    if (!straight && (!onRings || graph.boxes.size() <= 2))
        return withNotes(PlaceLayered(graph, style, share, former));
    const bool isTree = onRings && IsTree(graph);
    if (isTree && AreInRows(graph, former)) return withNotes(PlaceTree(graph, style, former));
    std::vector<Point> centers = CentersAsBefore(graph, style, former);
    const Graph given = graph;
    if (onRings) MakeRoomForNotes(graph, style.boxGapX, style.boxGapY, centers);
    Placement placement = withNotes(RouteMakingSpace(graph, std::move(centers), style, Draws::Apart));
    if (!isTree || !HasCrossings(placement)) return placement;
    graph = given;
    return withNotes(PlaceTree(graph, style, {}));
}

/// Across the flow of layers, so that the sides of boxes where lines leave stay free, and off the side where
/// lines from a box to itself are.
void PutNotesAcross(Graph& graph, const Style& style) {
    const bool sideways = style.placeStyle == PlaceStyle::LeftToRight;
    for (Box& box : graph.boxes) box.noteSide = sideways ? NoteSide::Above : NoteSide::Right;
    for (const Line& line : graph.lines)
        if (line.from == line.to && !sideways)
            graph.boxes[static_cast<std::size_t>(line.from)].noteSide = NoteSide::Left;
}

Placement PlaceComponent(Graph graph, const Style& style, PageShare share, const FormerPlaces& former) {
    PutNotesAcross(graph, style);
    if (former.AreMost()) {
        const LeafBlocks blocks(graph, style, former);
        Placement folded = PlaceFoldedAsBefore(blocks.Folded(), style, blocks.FoldedFormer(), share);
        if (blocks.CanUnfold(folded)) return blocks.Unfold(std::move(folded));
    }
    const FormerPlaces nothing;
    const LeafBlocks blocks(graph, style, nothing);
    return blocks.Unfold(PlaceFolded(blocks.Folded(), style, !blocks.IsEmpty(), share));
}

/// How to move a component so that most of its boxes are where they were; none when all are new.
std::optional<Point> MoveAsBefore(const FormerPlaces& former, const Placement& placement) {
    std::vector<double> x, y;
    for (std::size_t i = 0; i < former.centers.size(); ++i) {
        if (!former.centers[i]) continue;
        x.push_back(former.centers[i]->x - placement.centers[i].x);
        y.push_back(former.centers[i]->y - placement.centers[i].y);
    }
    if (x.empty()) return std::nullopt;
    const auto median = [](std::vector<double>& values) {
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    };
    return Point{median(x), median(y)};
}

/// All that is drawn, slanting lines as short segments.
std::vector<Rect> AreasOf(const Graph& graph, const Placement& placement) {
    constexpr double kSegment = 0.5;
    std::vector<Rect> areas;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const Rect box = BoxAt(graph.boxes[i], placement.centers[i]);
        areas.push_back(box);
        const Box& note = graph.boxes[i];
        if (note.HasNote())
            areas.push_back(NoteBeside(box, note.noteWidth, note.noteHeight, placement.noteSides[i]));
    }
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

Placement PlaceAndRoute(const Graph& graph, const Style& style, const FormerPlaces& former) {
    const std::vector<Component> components = ComponentsOf(graph);
    std::vector<Placement> parts;
    std::vector<std::vector<Rect>> areas;
    std::vector<std::optional<Point>> wishes;
    for (const Component& component : components) {
        const bool isMost = 2 * component.boxes.size() > graph.boxes.size();
        const FormerPlaces before = PartOf(former, component);
        parts.push_back(
            PlaceComponent(component.graph, style, isMost ? PageShare::Most : PageShare::Part, before));
        areas.push_back(AreasOf(component.graph, parts.back()));
        wishes.push_back(MoveAsBefore(before, parts.back()));
    }
    const double apart = graph.lines.empty() ? 1 : 2;  // a reader sees where one part ends
    const std::vector<Point> moves = PackParts(areas, apart * std::max(style.boxGapX, style.boxGapY), wishes);

    Placement whole;
    whole.centers.resize(graph.boxes.size());
    whole.routes.resize(graph.lines.size());
    whole.noteSides.resize(graph.boxes.size());
    for (std::size_t c = 0; c < components.size(); ++c) {
        const auto move = [&](Point& point) { point = point + moves[c]; };
        for (std::size_t i = 0; i < components[c].boxes.size(); ++i) {
            Point& center = whole.centers[components[c].boxes[i]];
            center = parts[c].centers[i];
            move(center);
            whole.noteSides[components[c].boxes[i]] = parts[c].noteSides[i];
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
