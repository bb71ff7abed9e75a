#include "layout/routing/ports.h"

#include <array>
#include <cstddef>

#include "layout/geometry/obstacles.h"
#include "layout/spacing/separate.h"

namespace norvelis::layout {

namespace {

constexpr double kCorner = 0.08;  // inches of a side that stay free at each end

/// The end of a line at a side of a box.
struct Port {
    int line = 0;
    bool isFirst = false;
    double at = 0;     ///< Along the side.
    double ahead = 0;  ///< Where the line goes from here, seen along the side.
};

enum SideIndex { left, right, bottom, top };

SideIndex SideOf(Point p, const Rect& box) {
    const std::array<double, 4> off{std::abs(p.x - box.x0), std::abs(p.x - box.x1), std::abs(p.y - box.y0),
                                    std::abs(p.y - box.y1)};
    return static_cast<SideIndex>(std::min_element(off.begin(), off.end()) - off.begin());
}

void SpreadOnce(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
                const std::vector<Rect>& boxes, const Obstacles& obstacles, double lineGap) {
    std::vector<std::array<std::vector<Port>, 4>> ports(boxes.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::vector<Point>& path = paths[i];
        if (path.size() < 2) continue;
        const auto add = [&](int box, Point end, Point next, bool isFirst) {
            const SideIndex side = SideOf(end, boxes[static_cast<std::size_t>(box)]);
            const bool horizontal = side == bottom || side == top;
            // Where the line is at a distance of two inches from the box: steep lines keep their place.
            const double off = std::abs(horizontal ? next.y - end.y : next.x - end.x);
            const double slope = (horizontal ? next.x - end.x : next.y - end.y) / std::max(off, 1e-6);
            const double at = horizontal ? end.x : end.y;
            ports[static_cast<std::size_t>(box)][side].push_back(
                {static_cast<int>(i), isFirst, at, at + slope * std::min(off, 2.0)});
        };
        add(lines[i].from, path.front(), path[1], true);
        add(lines[i].to, path.back(), path[path.size() - 2], false);
    }
    for (std::size_t box = 0; box < boxes.size(); ++box) {
        for (const SideIndex side : {left, right, bottom, top}) {
            std::vector<Port>& here = ports[box][side];
            if (here.size() < 2) continue;
            std::stable_sort(here.begin(), here.end(), [](const Port& a, const Port& b) {
                return std::abs(a.at - b.at) > 1e-6 ? a.at < b.at : a.ahead < b.ahead;
            });
            const bool horizontal = side == bottom || side == top;
            const double lo = horizontal ? boxes[box].x0 : boxes[box].y0,
                         hi = horizontal ? boxes[box].x1 : boxes[box].y1;
            const double corner = std::min(kCorner, (hi - lo) / 4);
            std::vector<double> wishes;
            wishes.reserve(here.size());
            for (const Port& port : here) wishes.push_back(port.at);
            const std::vector<double> places = SeparateWithin(wishes, lineGap, lo + corner, hi - corner);
            for (std::size_t i = 0; i < here.size(); ++i) {
                std::vector<Point>& path = paths[static_cast<std::size_t>(here[i].line)];
                Point& end = here[i].isFirst ? path.front() : path.back();
                const Point next = here[i].isFirst ? path[1] : path[path.size() - 2];
                double shift = places[i] - here[i].at;
                for (int attempt = 0; attempt < 5; ++attempt, shift /= 2) {
                    const Point moved =
                        horizontal ? Point{end.x + shift, end.y} : Point{end.x, end.y + shift};
                    if (obstacles.Bar(moved, next, -1e-6, -1, -1)) continue;
                    end = moved;
                    break;
                }
            }
        }
    }
}

}  // namespace

void SpreadPorts(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
                 const std::vector<Rect>& boxes, double lineGap) {
    constexpr int kTimes = 3;  // where one end cannot move, its neighbour goes half of the way each time
    const Obstacles obstacles(boxes);
    for (int times = 0; times < kTimes; ++times) SpreadOnce(paths, lines, boxes, obstacles, lineGap);
}

}  // namespace norvelis::layout
