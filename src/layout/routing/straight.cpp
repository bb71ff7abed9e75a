#include "layout/routing/straight.h"
#include "layout/graph/graph.h"

#include <cstddef>
#include <map>
#include <optional>

#include "layout/geometry/funnel.h"
#include "layout/geometry/obstacles.h"
#include "layout/geometry/tangents.h"
#include "layout/routing/corner_loops.h"
#include "layout/routing/corridor.h"
#include "layout/routing/orthogonal.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

constexpr double kTouch = 1e-6;  // ends are on borders, to within rounding

// Inches that a line goes out of its way.
constexpr double kBendCost = 0.5;
constexpr double kCrossingCost = 1.5;

class StraightRouter {
  public:
    StraightRouter(const std::vector<Rect>& boxes, const std::vector<Line>& lines, double lineGap)
        : boxes_(boxes),
          lines_(lines),
          lineGap_(lineGap),
          clearance_(lineGap),
          obstacles_(boxes),
          space_(boxes, clearance_, 1 + lineGap * std::min(200.0, static_cast<double>(lines.size()))),
          search_(space_, boxes, RouteRule{}, lineGap),
          routedNear_(BoundsOf(boxes), 2.0) {
        std::map<std::pair<int, int>, int> count;
        for (const Line& line : lines) ++count[std::minmax(line.from, line.to)];
        std::map<std::pair<int, int>, int> index;
        for (const Line& line : lines) {
            const auto pair = std::minmax(line.from, line.to);
            const int all = count[pair], at = index[pair]++;
            // Seen from the lower box, so that lines in both directions spread as one bundle.
            bundle_.push_back({all, (at - (all - 1) / 2.0) * (line.from <= line.to ? 1 : -1)});
            Box& label = widest_[pair];
            label = {std::max(label.width, line.labelWidth), std::max(label.height, line.labelHeight)};
        }
    }

    std::optional<std::vector<Point>> Direct(int line) const;
    /// The path of a line that cannot go directly; empty when it is barred altogether.
    std::vector<Point> Route(int line);
    /// Lines that are kept are crossed by later ones as little as possible.
    void Keep(const std::vector<Point>& path);

  private:
    struct InBundle {
        int count;
        double step;
    };
    std::optional<std::vector<Point>> Around(int line) const;
    std::optional<std::vector<Point>> Through(int line);
    bool IsClear(const std::vector<Point>& path) const;
    bool IsFree(const std::vector<Point>& path, int from, int to) const;
    double CostOf(const std::vector<Point>& path) const;
    std::vector<Door> DoorsOf(const Corridor& corridor, int line);
    Door DoorAt(const Exit& exit, const Rect& box, bool leaves) const;

    const std::vector<Rect>& boxes_;
    const std::vector<Line>& lines_;
    double lineGap_, clearance_;
    Obstacles obstacles_;
    FreeSpace space_;
    CorridorSearch search_;
    std::vector<std::pair<Point, Point>> routed_;
    SpatialIndex routedNear_;
    std::vector<InBundle> bundle_;
    std::map<std::pair<int, int>, Box> widest_;  ///< Label of the lines between two boxes.
};

/// Cuts off what lies inside the two boxes; nothing when the path does not leave them properly.
bool ClipToBorders(std::vector<Point>& path, const Rect& source, const Rect& target) {
    double enters, leaves;
    std::size_t first = 0;
    while (first + 1 < path.size() && source.Holds(path[first + 1])) ++first;
    if (first + 1 >= path.size() || !ClipSegment(path[first], path[first + 1], source, enters, leaves))
        return false;
    path[first] = Between(path[first], path[first + 1], leaves);
    path.erase(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(first));
    std::size_t last = path.size() - 1;
    while (last > 0 && target.Holds(path[last - 1])) --last;
    if (last == 0 || !ClipSegment(path[last - 1], path[last], target, enters, leaves)) return false;
    path[last] = Between(path[last - 1], path[last], enters);
    path.resize(last + 1);
    return true;
}

std::optional<std::vector<Point>> StraightRouter::Direct(int line) const {
    const int from = lines_[At(line)].from, to = lines_[At(line)].to;
    if (from == to) return std::nullopt;
    const Rect &source = boxes_[At(from)], &target = boxes_[At(to)];
    const Point path = target.Center() - source.Center();
    const double length = Length(path);
    if (length <= 0) return std::nullopt;
    const Point normal{-path.y / length, path.x / length};
    const InBundle& bundle = bundle_[At(line)];
    // The bundle is as wide as the smaller box shows itself from the other, at most.
    const auto shows = [&](const Rect& box) {
        return std::abs(normal.x) * box.Width() + std::abs(normal.y) * box.Height();
    };
    // Lines of a bundle are far enough from each other for their labels.
    const Box& label = widest_.at(std::minmax(from, to));
    const double wanted = lineGap_ + std::abs(normal.x) * label.width + std::abs(normal.y) * label.height;
    const double space = 0.8 * std::min(shows(source), shows(target)) / bundle.count;
    const Point inner = normal * (bundle.step * std::min(wanted, space)),
                outer = normal * (bundle.step * wanted);
    const Point a = source.Center(), b = target.Center();
    std::vector<std::vector<Point>> paths;
    if (wanted > space && bundle.step != 0)  // the lines bow
        paths.push_back({a + inner, Between(a, b, 0.25) + outer, Between(a, b, 0.75) + outer, b + inner});
    paths.push_back({a + inner, b + inner});
    for (auto& points : paths)
        if (ClipToBorders(points, source, target) && IsFree(points, from, to)) return points;
    return std::nullopt;
}

bool StraightRouter::IsFree(const std::vector<Point>& path, int from, int to) const {
    for (std::size_t i = 1; i < path.size(); ++i)
        if (obstacles_.Bar(path[i - 1], path[i], clearance_ * 0.5, from, to)) return false;
    return IsClear(path);
}

Door StraightRouter::DoorAt(const Exit& exit, const Rect& box, bool leaves) const {
    Door door;
    switch (exit.side) {
        case Side::Top:
            door = {{exit.lo, box.y1}, {exit.hi, box.y1}};
            break;
        case Side::Bottom:
            door = {{exit.hi, box.y0}, {exit.lo, box.y0}};
            break;
        case Side::Right:
            door = {{box.x1, exit.hi}, {box.x1, exit.lo}};
            break;
        case Side::Left:
            door = {{box.x0, exit.lo}, {box.x0, exit.hi}};
            break;
    }
    if (!leaves) std::swap(door.left, door.right);
    return door;
}

std::vector<Door> StraightRouter::DoorsOf(const Corridor& corridor, int line) {
    const Rect &source = boxes_[At(lines_[At(line)].from)], &target = boxes_[At(lines_[At(line)].to)];
    std::vector<Door> doors{DoorAt(corridor.from, source, true),
                            DoorAt(corridor.from, source.Grown(clearance_), true)};
    for (std::size_t i = 0; i < corridor.portals.size(); ++i) {
        const Portal& portal = corridor.portals[i];
        const Point lo{portal.lo, portal.y}, hi{portal.hi, portal.y};
        const bool upwards = space_.Cells()[At(corridor.cells[i])].area.y1 == portal.y;
        doors.push_back(upwards ? Door{lo, hi} : Door{hi, lo});
    }
    doors.push_back(DoorAt(corridor.to, target.Grown(clearance_), false));
    doors.push_back(DoorAt(corridor.to, target, false));
    return doors;
}

bool StraightRouter::IsClear(const std::vector<Point>& path) const {
    for (std::size_t i = 1; i < path.size(); ++i)
        if (obstacles_.Bar(path[i - 1], path[i], -kTouch, -1, -1)) return false;
    return true;
}

/// Around the boxes in between, on the sides that make the line short and cross few others.
std::optional<std::vector<Point>> StraightRouter::Around(int line) const {
    const int from = lines_[At(line)].from, to = lines_[At(line)].to;
    if (from == to) return std::nullopt;
    std::optional<std::vector<Point>> best;
    double bestCost = 0;
    for (auto& path : TautPaths(boxes_, obstacles_, from, to, clearance_)) {
        if (!ClipToBorders(path, boxes_[At(from)], boxes_[At(to)]) || !IsClear(path)) continue;
        const double cost = CostOf(path);
        if (best && cost >= bestCost) continue;
        best = std::move(path);
        bestCost = cost;
    }
    return best;
}

double StraightRouter::CostOf(const std::vector<Point>& path) const {
    double cost = 0;
    std::vector<int> crossed;
    for (std::size_t i = 1; i < path.size(); ++i) {
        const Point a = path[i - 1], b = path[i];
        cost += Length(b - a) + kBendCost;
        const int parts = 1 + static_cast<int>(Length(b - a) / 8);
        for (int k = 0; k < parts; ++k) {
            const Point from = Between(a, b, static_cast<double>(k) / parts);
            const Point to = Between(a, b, static_cast<double>(k + 1) / parts);
            routedNear_.Near(RectOf(from, to), [&](int segment) {
                if (SegmentsCross(a, b, routed_[At(segment)].first, routed_[At(segment)].second))
                    crossed.push_back(segment);
                return true;
            });
        }
    }
    std::sort(crossed.begin(), crossed.end());
    crossed.erase(std::unique(crossed.begin(), crossed.end()), crossed.end());
    return cost + kCrossingCost * static_cast<double>(crossed.size());
}

/// Through a corridor of the free space, where boxes are too densely for anything else.
std::optional<std::vector<Point>> StraightRouter::Through(int line) {
    const int from = lines_[At(line)].from, to = lines_[At(line)].to;
    const auto corridor = search_.Find(from, to);
    if (!corridor) return std::nullopt;
    search_.Take(*corridor, from);
    const Rect &source = boxes_[At(from)], &target = boxes_[At(to)];
    std::vector<Point> path = ShortestThrough(source.Center(), DoorsOf(*corridor, line), target.Center());
    if (!ClipToBorders(path, source, target) || !IsClear(path)) return std::nullopt;
    return path;
}

std::vector<Point> StraightRouter::Route(int line) {
    auto path = Around(line);
    if (!path) path = Through(line);
    if (!path) return {};
    Keep(*path);
    return *path;
}

void StraightRouter::Keep(const std::vector<Point>& path) {
    for (std::size_t i = 1; i < path.size(); ++i) {
        routedNear_.AddSegment(path[i - 1], path[i], static_cast<int>(routed_.size()));
        routed_.emplace_back(path[i - 1], path[i]);
    }
}

}  // namespace

LinePaths RouteStraight(const std::vector<Rect>& boxes, const std::vector<Line>& lines, double lineGap) {
    StraightRouter router(boxes, lines, lineGap);
    LinePaths paths;
    paths.points.resize(lines.size());
    const Obstacles obstacles(boxes);
    std::vector<int> barred;
    std::map<int, std::vector<int>> loops;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].from == lines[i].to) loops[lines[i].from].push_back(static_cast<int>(i));
    for (const auto& [box, here] : loops) {
        std::vector<Line> ofBox;
        for (const int i : here) ofBox.push_back(lines[At(i)]);
        auto around = LoopsAroundCorners(boxes[At(box)], ofBox, obstacles, lineGap);
        for (std::size_t k = 0; k < here.size(); ++k) paths.points[At(here[k])] = std::move(around[k]);
    }
    std::vector<int> bent;
    for (const int i : ShortLinesFirst(boxes, lines)) {
        if (!paths.points[At(i)].empty()) {
            router.Keep(paths.points[At(i)]);
        } else if (auto path = router.Direct(i)) {
            router.Keep(*path);
            paths.points[At(i)] = std::move(*path);
        } else {
            bent.push_back(i);
        }
    }
    for (const int i : bent) {
        paths.points[At(i)] = router.Route(i);
        if (paths.points[At(i)].empty()) barred.push_back(i);
    }
    if (barred.empty()) return paths;
    std::vector<Line> rest;
    for (const int i : barred) rest.push_back(lines[At(i)]);
    LinePaths rightAngled = RouteOrthogonally(boxes, rest, RouteRule{}, lineGap);
    for (std::size_t k = 0; k < barred.size(); ++k)
        paths.points[At(barred[k])] = std::move(rightAngled.points[k]);
    paths.crowded = rightAngled.crowded;
    return paths;
}

}  // namespace norvelis::layout
