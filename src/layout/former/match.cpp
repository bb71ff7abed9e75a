#include "layout/former/match.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <utility>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// Where the lines of a box lead, in the numbers of the graph of before, members apart from owners; -1 for a
/// box that is not matched. Sorted.
using Ends = std::vector<std::pair<int, bool>>;

std::vector<Ends> EndsOf(const Graph& graph, const std::vector<int>& name) {
    std::vector<Ends> ends(graph.boxes.size());
    for (const Line& line : graph.lines) {
        ends[At(line.from)].emplace_back(name[At(line.to)], true);
        ends[At(line.to)].emplace_back(name[At(line.from)], false);
    }
    for (Ends& each : ends) std::sort(each.begin(), each.end());
    return ends;
}

bool LeadsToKnown(const Ends& ends) {
    return !ends.empty() && ends.back().first >= 0;
}

/// One match can tell the next: a renamed owner of renamed members is known once they are.
void MatchByEnds(const Graph& graph, const Graph& former, std::vector<int>& boxes) {
    for (bool found = true; found;) {
        found = false;
        std::vector<int> kept(former.boxes.size(), -1);
        for (const int box : boxes)
            if (box >= 0) kept[At(box)] = box;
        const std::vector<Ends> ends = EndsOf(graph, boxes), formerEnds = EndsOf(former, kept);
        std::map<Ends, std::vector<int>> gone;
        for (std::size_t i = former.boxes.size(); i-- > 0;)
            if (kept[i] < 0) gone[formerEnds[i]].push_back(static_cast<int>(i));
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            if (boxes[i] >= 0 || !LeadsToKnown(ends[i])) continue;
            const auto same = gone.find(ends[i]);
            if (same == gone.end() || same->second.empty()) continue;
            boxes[i] = same->second.back();
            same->second.pop_back();
            found = true;
        }
    }
}

std::vector<int> MatchLines(const Graph& graph, const Graph& former, const std::vector<int>& boxes) {
    std::map<std::pair<int, int>, std::vector<int>> byEnds;  // the first at the end
    for (std::size_t k = former.lines.size(); k-- > 0;)
        byEnds[{former.lines[k].from, former.lines[k].to}].push_back(static_cast<int>(k));
    std::vector<int> lines;
    for (const Line& line : graph.lines) {
        const auto same = byEnds.find({boxes[At(line.from)], boxes[At(line.to)]});
        const bool isKnown = same != byEnds.end() && !same->second.empty();
        lines.push_back(isKnown ? same->second.back() : -1);
        if (isKnown) same->second.pop_back();
    }
    return lines;
}

bool IsOnBorder(Point point, const Rect& box) {
    constexpr double kHair = 1e-6;
    return !box.Grown(-kHair).Holds(point) && box.Grown(kHair).Holds(point);
}

bool SameSize(const Box& a, const Box& b) {
    constexpr double kHair = 1e-6;
    const auto same = [](double x, double y) { return std::abs(x - y) < kHair; };
    return same(a.width, b.width) && same(a.height, b.height) && same(a.noteWidth, b.noteWidth) &&
           same(a.noteHeight, b.noteHeight);
}

bool AllMatched(const std::vector<int>& matches, std::size_t count) {
    return matches.size() == count && std::find(matches.begin(), matches.end(), -1) == matches.end();
}

bool AnyOverlap(const std::vector<Rect>& rects) {
    for (std::size_t i = 0; i < rects.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            if (Overlap(rects[i], rects[k])) return true;
    return false;
}

bool RunsThroughAny(const std::vector<Point>& path, const Obstacles& boxes) {
    for (std::size_t p = 1; p < path.size(); ++p)
        if (boxes.Bar(path[p - 1], path[p], 0, -1, -1)) return true;
    return false;
}

bool Passes(const std::vector<Point>& path, const Rect& rect) {
    for (std::size_t p = 1; p < path.size(); ++p)
        if (SegmentHits(path[p - 1], path[p], rect)) return true;
    return false;
}

}  // namespace

Matches MatchGraphs(const Graph& graph, const Graph& former, std::vector<int> named) {
    MatchByEnds(graph, former, named);
    std::vector<int> lines = MatchLines(graph, former, named);
    return {std::move(named), std::move(lines)};
}

FormerPlaces PlacesOf(const Matches& matches, const Placement& former) {
    const auto kept = static_cast<std::size_t>(
        std::count_if(matches.boxes.begin(), matches.boxes.end(), [](int box) { return box >= 0; }));
    const std::size_t changed = matches.boxes.size() + former.centers.size() - 2 * kept;
    constexpr std::size_t kFew = 3, kShare = 10;
    if (changed > std::max(kFew, std::max(matches.boxes.size(), former.centers.size()) / kShare)) return {};
    FormerPlaces places;
    for (const int box : matches.boxes)
        places.centers.push_back(box < 0 ? std::nullopt : std::optional(former.centers[At(box)]));
    for (const int line : matches.lines)
        places.routes.push_back(line < 0 ? std::vector<Point>() : former.routes[At(line)].points);
    return places;
}

bool CanStay(const Graph& graph, const Matches& matches, const Graph& formerGraph, const Placement& former) {
    constexpr double kTouch = 1e-6, kMostAway = 0.15;  // inches
    if (!AllMatched(matches.boxes, formerGraph.boxes.size()) ||
        !AllMatched(matches.lines, formerGraph.lines.size()))
        return false;
    std::vector<Rect> boxes, labels;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const Box& box = graph.boxes[i];
        if (!SameSize(box, formerGraph.boxes[At(matches.boxes[i])])) return false;
        const Point center = former.centers[At(matches.boxes[i])];
        boxes.push_back(RectAround(center, box.width - kTouch, box.height - kTouch));
    }
    const Obstacles obstacles(boxes);
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        const Route& route = former.routes[At(matches.lines[k])];
        if (route.points.size() < 2 ||
            !IsOnBorder(route.points.front(), boxes[At(line.from)].Grown(kTouch / 2)) ||
            !IsOnBorder(route.points.back(), boxes[At(line.to)].Grown(kTouch / 2)) ||
            RunsThroughAny(route.points, obstacles))
            return false;
        if (line.labelWidth <= 0) continue;
        const Rect label = RectAround(route.label, line.labelWidth - kTouch, line.labelHeight - kTouch);
        if (!Passes(route.points, label.Grown(kMostAway))) return false;
        if (obstacles.Cover(label)) return false;
        labels.push_back(label);
    }
    return !AnyOverlap(boxes) && !AnyOverlap(labels);
}

}  // namespace norvelis::layout
