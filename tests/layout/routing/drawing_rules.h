#pragma once

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "base/random.h"
#include "layout/graph/graph.h"
#include "layout/graph/notes.h"
#include "layout/graph/style.h"

// What every drawing must keep, checked in the slow and simple manner, without the indexes that the router
// uses.
namespace norvelis::layout {

/// A graph shaped like a schema: owners with up to 40 members, some sets across, labels on all lines.
inline Graph SchemaLike(int records, double setsPerRecord, std::uint64_t seed) {
    Random random(seed);
    const auto below = [&](int n) { return static_cast<int>(random.Rnd() * n); };
    Graph graph;
    for (int i = 0; i < records; ++i) graph.boxes.push_back({2.4 + random.Rnd(), 1.0 + 0.15 * below(3)});
    const auto join = [&](int owner, int member) {
        graph.lines.push_back({owner, member, 0.6 + 0.4 * random.Rnd(), 0.2});
    };
    for (int i = 1; i < records; ++i) join(i <= 40 && records > 60 ? 0 : below(i), i);
    while (static_cast<double>(graph.lines.size()) < records * setsPerRecord)
        join(below(records), below(records));
    return graph;
}

/// A style in the message of a failed test.
inline std::string NameOf(const Style& style) {
    return "place " + std::to_string(static_cast<int>(style.placeStyle)) + ", route " +
           std::to_string(static_cast<int>(style.routeStyle));
}

inline void ExpectEqual(const Placement& a, const Placement& b) {
    EXPECT_EQ(a.centers, b.centers);
    ASSERT_EQ(a.routes.size(), b.routes.size());
    for (std::size_t i = 0; i < a.routes.size(); ++i) {
        EXPECT_EQ(a.routes[i].points, b.routes[i].points);
        EXPECT_EQ(a.routes[i].label, b.routes[i].label);
    }
}

/// A route as it is drawn: curves as many short segments.
inline std::vector<Point> Drawn(const Route& route) {
    if (!route.curved || route.points.size() < 3) return route.points;
    std::vector<Point> drawn{route.points.front()};
    for (std::size_t i = 1; i + 1 < route.points.size(); ++i) {
        const Point a = Between(route.points[i - 1], route.points[i], 0.5), b = route.points[i];
        const Point c = Between(route.points[i], route.points[i + 1], 0.5);
        for (int k = 0; k <= 8; ++k) {
            const double t = k / 8.0;
            drawn.push_back(Between(Between(a, b, t), Between(b, c, t), t));
        }
    }
    drawn.push_back(route.points.back());
    return drawn;
}

/// The rules that a drawing breaks, in words; empty when it breaks none.
inline std::set<std::string> BrokenRules(const Graph& graph, const Placement& placement) {
    constexpr double kTouch = 1e-6;
    std::set<std::string> broken;
    std::vector<Rect> boxes, labels;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        boxes.push_back(RectAround(placement.centers[i], graph.boxes[i].width, graph.boxes[i].height));
    for (std::size_t i = 0; i < graph.lines.size(); ++i)
        labels.push_back(
            RectAround(placement.routes[i].label, graph.lines[i].labelWidth, graph.lines[i].labelHeight));
    for (const int of : BoxesWithNote(graph)) {
        const auto own = static_cast<std::size_t>(of);
        const Box& size = graph.boxes[own];
        const Rect note = NoteBeside(boxes[own], size.noteWidth, size.noteHeight, placement.noteSides[own]);
        for (std::size_t i = 0; i < graph.boxes.size(); ++i)
            if (i != own && Overlap(note.Grown(kNoteGap), boxes[i]))
                broken.insert("a note is nearer to another box");
        boxes.push_back(note);
    }
    for (std::size_t i = 0; i < boxes.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            if (Overlap(boxes[i], boxes[k])) broken.insert("boxes or notes overlap");
    for (std::size_t i = 0; i < labels.size(); ++i) {
        for (const Rect& box : boxes)
            if (Overlap(labels[i], box)) broken.insert("a label covers a box or note");
        for (std::size_t k = 0; k < i; ++k)
            if (Overlap(labels[i], labels[k])) broken.insert("a label covers a label");
    }
    for (const Route& route : placement.routes) {
        const std::vector<Point> path = Drawn(route);
        if (path.size() < 2) broken.insert("a line is missing");
        for (std::size_t k = 1; k < path.size(); ++k)
            for (const Rect& box : boxes)
                if (SegmentHits(path[k - 1], path[k], box.Grown(-kTouch)))
                    broken.insert("a line runs through a box or note");
    }
    for (std::size_t i = 0; i < graph.lines.size(); ++i) {
        const auto isOnBorder = [&](Point p, int box) {
            const Rect& rect = boxes[static_cast<std::size_t>(box)];
            return !rect.Grown(-kTouch).Holds(p) && rect.Grown(kTouch).Holds(p);
        };
        const std::vector<Point>& path = placement.routes[i].points;
        if (path.empty() || !isOnBorder(path.front(), graph.lines[i].from) ||
            !isOnBorder(path.back(), graph.lines[i].to))
            broken.insert("a line ends off its box");
    }
    return broken;
}

/// Labels that another line runs through, and labels that their own line does not touch.
struct LabelFaults {
    int crossed = 0, astray = 0;
};
inline LabelFaults FaultsOfLabels(const Graph& graph, const Placement& placement) {
    constexpr double kTouch = 1e-6;
    std::vector<std::vector<Point>> paths;
    for (const Route& route : placement.routes) paths.push_back(Drawn(route));
    const auto runsThrough = [](const std::vector<Point>& path, const Rect& label) {
        for (std::size_t k = 1; k < path.size(); ++k)
            if (SegmentHits(path[k - 1], path[k], label)) return true;
        return false;
    };
    LabelFaults faults;
    for (std::size_t i = 0; i < graph.lines.size(); ++i) {
        const Line& line = graph.lines[i];
        if (line.labelWidth <= 0) continue;
        const Rect label =
            RectAround(placement.routes[i].label, line.labelWidth, line.labelHeight).Grown(-kTouch);
        bool crossed = false;
        for (std::size_t k = 0; k < paths.size() && !crossed; ++k)
            crossed = k != i && runsThrough(paths[k], label);
        faults.crossed += crossed;
        faults.astray += !runsThrough(paths[i], label);
    }
    return faults;
}

/// Pairs of segments of two lines that cross.
inline int Crossings(const Placement& placement) {
    int crossings = 0;
    for (std::size_t i = 0; i < placement.routes.size(); ++i) {
        const std::vector<Point>& a = placement.routes[i].points;
        for (std::size_t k = 0; k < i; ++k) {
            const std::vector<Point>& b = placement.routes[k].points;
            for (std::size_t p = 1; p < a.size(); ++p)
                for (std::size_t q = 1; q < b.size(); ++q)
                    crossings += SegmentsCross(a[p - 1], a[p], b[q - 1], b[q]);
        }
    }
    return crossings;
}

/// Points where more than one line meets a box.
inline int SharedPorts(const Placement& placement) {
    std::multiset<std::pair<double, double>> ports;
    for (const Route& route : placement.routes) {
        ports.emplace(route.points.front().x, route.points.front().y);
        ports.emplace(route.points.back().x, route.points.back().y);
    }
    int shared = 0;
    for (const auto& port : ports) shared += ports.count(port) > 1;
    return shared;
}

}  // namespace norvelis::layout
