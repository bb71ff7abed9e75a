#include "layout/metrics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "layout/graph/notes.h"

namespace norvelis::layout {

namespace {

constexpr double kSlack = 1e-6;  // what touches only is no fault

struct Area {
    double x0, y0, x1, y1;
};

Area Around(const Point& center, double width, double height) {
    return {center.x - width / 2, center.y - height / 2, center.x + width / 2, center.y + height / 2};
}

bool Overlap(const Area& a, const Area& b) {
    return a.x0 + kSlack < b.x1 && b.x0 + kSlack < a.x1 && a.y0 + kSlack < b.y1 && b.y0 + kSlack < a.y1;
}

struct Segment {
    Point a, b;
    int line;
    Area Bounds() const {
        return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    }
};

struct Segments {
    std::vector<Segment> segments;
    std::vector<Area> bounds;

    void Add(const std::vector<Point>& path, int line) {
        for (std::size_t i = 1; i < path.size(); ++i) {
            segments.push_back({path[i - 1], path[i], line});
            bounds.push_back(segments.back().Bounds());
        }
    }
};

double Turn(const Point& a, const Point& b, const Point& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The points where the line turns, and its ends: a crossing in the middle of a straight segment shall not
/// fall between two.
std::vector<Point> Corners(const std::vector<Point>& points) {
    std::vector<Point> corners;
    for (const Point& point : points) {
        if (!corners.empty() && corners.back() == point) continue;
        const std::size_t n = corners.size();
        if (n > 1 && std::abs(Turn(corners[n - 2], corners[n - 1], point)) < kSlack) corners.pop_back();
        corners.push_back(point);
    }
    return corners;
}

}  // namespace

std::vector<Point> Drawn(const Route& route) {
    const auto& points = route.points;
    if (!route.curved || points.size() < 3) return Corners(points);
    constexpr int kSteps = 8;
    const auto middle = [](const Point& a, const Point& b) {
        return Point{(a.x + b.x) / 2, (a.y + b.y) / 2};
    };
    std::vector<Point> drawn{points.front()};
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const Point from = middle(points[i - 1], points[i]), to = middle(points[i], points[i + 1]);
        for (int step = 0; step <= kSteps; ++step) {
            const double t = static_cast<double>(step) / kSteps, u = 1 - t;
            drawn.push_back({u * u * from.x + 2 * u * t * points[i].x + t * t * to.x,
                             u * u * from.y + 2 * u * t * points[i].y + t * t * to.y});
        }
    }
    drawn.push_back(points.back());
    return Corners(drawn);
}

namespace {

bool Cross(const Segment& p, const Segment& q) {
    const auto opposite = [](double a, double b) {
        return (a > kSlack && b < -kSlack) || (a < -kSlack && b > kSlack);
    };
    return opposite(Turn(p.a, p.b, q.a), Turn(p.a, p.b, q.b)) &&
           opposite(Turn(q.a, q.b, p.a), Turn(q.a, q.b, p.b));
}

/// Where two segments that cross do so, in thousandths of an inch.
std::pair<long, long> Meeting(const Segment& p, const Segment& q) {
    const double a = Turn(q.a, q.b, p.a), b = Turn(q.a, q.b, p.b), t = a / (a - b);
    return {std::lround(1000 * (p.a.x + (p.b.x - p.a.x) * t)),
            std::lround(1000 * (p.a.y + (p.b.y - p.a.y) * t))};
}

/// Whether two segments lie on one another for more than a hair.
bool Share(const Segment& p, const Segment& q) {
    constexpr double kHair = 1e-3;
    const double length = std::hypot(p.b.x - p.a.x, p.b.y - p.a.y);
    if (length < kHair) return false;
    if (std::abs(Turn(p.a, p.b, q.a)) / length > kHair || std::abs(Turn(p.a, p.b, q.b)) / length > kHair)
        return false;
    const auto along = [&](const Point& c) {
        return ((c.x - p.a.x) * (p.b.x - p.a.x) + (c.y - p.a.y) * (p.b.y - p.a.y)) / length;
    };
    const double from = std::max(0.0, std::min(along(q.a), along(q.b)));
    const double to = std::min(length, std::max(along(q.a), along(q.b)));
    return to - from > kHair;
}

/// Whether the segment has a part inside the area (Liang, Barsky).
bool RunsThrough(const Segment& segment, const Area& area) {
    double enter = 0, leave = 1;
    const double dx = segment.b.x - segment.a.x, dy = segment.b.y - segment.a.y;
    const double p[] = {-dx, dx, -dy, dy};
    const double q[] = {segment.a.x - area.x0 - kSlack, area.x1 - kSlack - segment.a.x,
                        segment.a.y - area.y0 - kSlack, area.y1 - kSlack - segment.a.y};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] <= 0) return false;
        } else if (p[i] < 0) {
            enter = std::max(enter, q[i] / p[i]);
        } else {
            leave = std::min(leave, q[i] / p[i]);
        }
    }
    return enter < leave;
}

/// Calls visit(i, k) for all pairs of areas, i from the first and k from the second list, that may touch.
template <typename F>
void ForPairs(const std::vector<Area>& first, const std::vector<Area>& second, F&& visit) {
    std::vector<std::pair<double, int>>
        starts;  // sweep from left to right; the second list's numbers are negative
    for (std::size_t i = 0; i < first.size(); ++i) starts.emplace_back(first[i].x0, static_cast<int>(i));
    for (std::size_t k = 0; k < second.size(); ++k)
        starts.emplace_back(second[k].x0, -1 - static_cast<int>(k));
    std::sort(starts.begin(), starts.end());
    std::vector<int> openFirst, openSecond;
    const auto meet = [](std::vector<int>& open, const std::vector<Area>& areas, const Area& area,
                         auto&& met) {
        for (std::size_t n = 0; n < open.size();) {
            const Area& other = areas[open[n]];
            if (other.x1 < area.x0) {
                open[n] = open.back();
                open.pop_back();
                continue;
            }
            if (other.y0 <= area.y1 && area.y0 <= other.y1) met(open[n]);
            ++n;
        }
    };
    for (const auto& [x, id] : starts) {
        if (id >= 0) {
            meet(openSecond, second, first[id], [&, i = id](int k) { visit(i, k); });
            openFirst.push_back(id);
        } else {
            const int k = -1 - id;
            meet(openFirst, first, second[k], [&](int i) { visit(i, k); });
            openSecond.push_back(k);
        }
    }
}

double DistanceTo(const Segment& segment, const Area& area) {
    if (RunsThrough(segment, area)) return 0;
    constexpr int kSteps = 64;
    double least = std::numeric_limits<double>::infinity();
    for (int step = 0; step <= kSteps; ++step) {
        const double t = static_cast<double>(step) / kSteps;
        const double x = segment.a.x + (segment.b.x - segment.a.x) * t,
                     y = segment.a.y + (segment.b.y - segment.a.y) * t;
        least = std::min(least, std::hypot(std::max({area.x0 - x, 0.0, x - area.x1}),
                                           std::max({area.y0 - y, 0.0, y - area.y1})));
    }
    return least;
}

/// How the ends of lines share the sides of their boxes.
void MeasurePorts(const Graph& graph, const Placement& placement, const std::vector<Area>& boxes,
                  Quality& quality) {
    constexpr double kClose = 0.09, kWished = 0.18, kCorner = 0.08;
    std::map<std::pair<int, int>, std::vector<double>> ports;  // by box and side
    const auto add = [&](int box, const Point& end) {
        const Area& area = boxes[static_cast<std::size_t>(box)];
        const double off[] = {std::abs(end.x - area.x0), std::abs(end.x - area.x1), std::abs(end.y - area.y0),
                              std::abs(end.y - area.y1)};
        const auto side = static_cast<int>(std::min_element(off, off + 4) - off);
        ports[{box, side}].push_back(side < 2 ? end.y - area.y0 : end.x - area.x0);
    };
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const auto& points = placement.routes[k].points;
        if (points.size() < 2) continue;
        add(graph.lines[k].from, points.front());
        add(graph.lines[k].to, points.back());
    }
    double closest = std::numeric_limits<double>::infinity();
    for (auto& [where, along] : ports) {
        std::sort(along.begin(), along.end());
        along.erase(
            std::unique(along.begin(), along.end(), [](double a, double b) { return b - a < kSlack; }),
            along.end());
        if (along.size() < 2) continue;
        ++quality.portSides;
        double here = std::numeric_limits<double>::infinity();
        for (std::size_t i = 1; i < along.size(); ++i) here = std::min(here, along[i] - along[i - 1]);
        closest = std::min(closest, here);
        const Area& area = boxes[static_cast<std::size_t>(where.first)];
        const double length = where.second < 2 ? area.y1 - area.y0 : area.x1 - area.x0;
        const double wished = static_cast<double>(along.size() - 1) * kWished;
        quality.crowdedSides += here < kClose - kSlack && wished <= length - 2 * kCorner;
    }
    quality.closestPorts = quality.portSides > 0 ? closest : 0;
}

}  // namespace

double Quality::LabelOnA0() const {
    constexpr double kLong = 46.81, kShort = 33.11, kLabel = 6;
    if (width <= 0 || height <= 0) return kLabel;
    const double landscape = std::min(kLong / width, kShort / height);
    const double portrait = std::min(kShort / width, kLong / height);
    return kLabel * std::min(1.0, std::max(landscape, portrait));
}

Quality Measure(const Graph& graph, const Placement& placement) {
    Quality quality;
    std::vector<Area> boxes, labels;
    std::vector<int> labelLine;
    Segments drawn, straight;  // lines cross where they would without their roundings
    std::vector<Area> notes;   // they count for the page alone
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const Box& box = graph.boxes[i];
        boxes.push_back(Around(placement.centers[i], box.width, box.height));
        if (!box.HasNote()) continue;
        const Rect note = NoteBeside(BoxAt(box, placement.centers[i]), box.noteWidth, box.noteHeight,
                                     placement.noteSides[i]);
        notes.push_back({note.x0, note.y0, note.x1, note.y1});
    }
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        const Route& route = placement.routes[k];
        const std::vector<Point> corners = Corners(route.points), path = Drawn(route);
        drawn.Add(path, static_cast<int>(k));
        straight.Add(corners, static_cast<int>(k));
        quality.bends += std::max(0, static_cast<int>(corners.size()) - 2);
        for (std::size_t i = 1; i < path.size(); ++i)
            quality.length += std::hypot(path[i].x - path[i - 1].x, path[i].y - path[i - 1].y);
        if (line.labelWidth > 0 && line.labelHeight > 0) {
            labels.push_back(Around(route.label, line.labelWidth, line.labelHeight));
            labelLine.push_back(static_cast<int>(k));
        }
    }

    ForPairs(boxes, boxes,
             [&](int i, int k) { quality.boxOverlaps += i < k && Overlap(boxes[i], boxes[k]); });
    ForPairs(labels, labels,
             [&](int i, int k) { quality.labelCollisions += i < k && Overlap(labels[i], labels[k]); });
    ForPairs(labels, boxes, [&](int i, int k) { quality.labelCollisions += Overlap(labels[i], boxes[k]); });
    std::set<std::pair<int, int>> boxesCrossed, labelsCrossed, shared, labelsTouched;
    std::map<std::pair<int, int>, int> crossed;
    std::set<std::pair<long, long>> points;  // what crosses a trunk crosses all its lines at one
    ForPairs(drawn.bounds, boxes, [&](int i, int k) {
        if (RunsThrough(drawn.segments[i], boxes[k])) boxesCrossed.emplace(drawn.segments[i].line, k);
    });
    ForPairs(drawn.bounds, labels, [&](int i, int k) {
        const Segment& segment = drawn.segments[i];
        if (!RunsThrough(segment, labels[k])) return;
        (segment.line == labelLine[k] ? labelsTouched : labelsCrossed).emplace(segment.line, k);
    });
    ForPairs(straight.bounds, straight.bounds, [&](int i, int k) {
        const Segment &p = straight.segments[i], &q = straight.segments[k];
        if (i >= k || p.line == q.line) return;
        if (Cross(p, q) && points.insert(Meeting(p, q)).second)
            ++crossed[{std::min(p.line, q.line), std::max(p.line, q.line)}];
        if (Share(p, q)) shared.emplace(std::min(p.line, q.line), std::max(p.line, q.line));
    });
    for (const auto& [pair, count] : crossed) {
        const Line &p = graph.lines[static_cast<std::size_t>(pair.first)],
                   &q = graph.lines[static_cast<std::size_t>(pair.second)];
        const bool first = p.from == q.from || p.from == q.to, second = p.to == q.from || p.to == q.to;
        quality.crossings += count;
        quality.crossedTwice += count > 1;
        if (first && second) {
            quality.pairCrossings += count;
        } else if (first || second) {
            quality.sharedEndCrossings += count;
        }
    }
    std::vector<double> distance(labels.size(), std::numeric_limits<double>::infinity());
    std::vector<int> labelOf(graph.lines.size(), -1);
    for (std::size_t i = 0; i < labels.size(); ++i)
        labelOf[static_cast<std::size_t>(labelLine[i])] = static_cast<int>(i);
    for (const Segment& segment : drawn.segments) {
        const int label = labelOf[static_cast<std::size_t>(segment.line)];
        if (label < 0) continue;
        double& least = distance[static_cast<std::size_t>(label)];
        if (least > 0) least = std::min(least, DistanceTo(segment, labels[static_cast<std::size_t>(label)]));
    }
    for (const double each : distance) quality.labelDistance = std::max(quality.labelDistance, each);
    MeasurePorts(graph, placement, boxes, quality);
    quality.boxesCrossed = static_cast<int>(boxesCrossed.size());
    quality.labelsCrossed = static_cast<int>(labelsCrossed.size());
    quality.labelsAstray = static_cast<int>(labels.size() - labelsTouched.size());
    quality.sharedSegments = static_cast<int>(shared.size());

    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    Area all{kInfinite, kInfinite, -kInfinite, -kInfinite};
    for (const auto* areas : {&boxes, &notes, &labels, &drawn.bounds}) {
        for (const Area& area : *areas) {
            all.x0 = std::min(all.x0, area.x0);
            all.y0 = std::min(all.y0, area.y0);
            all.x1 = std::max(all.x1, area.x1);
            all.y1 = std::max(all.y1, area.y1);
        }
    }
    quality.width = std::max(0.0, all.x1 - all.x0);
    quality.height = std::max(0.0, all.y1 - all.y0);
    return quality;
}

}  // namespace norvelis::layout
