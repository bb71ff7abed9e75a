#include "layout/routing/nesting.h"

#include <cstddef>
#include <map>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

struct Bend {
    std::size_t line, point;
    Point outward;
    double reach;  ///< How far outwards the line comes from and goes to.
};

Point UnitOf(Point path) {
    const double length = Length(path);
    return length > 0 ? path * (1 / length) : path;
}

void Nest(std::vector<Bend>& bends, std::vector<std::vector<Point>>& paths, const Obstacles& obstacles,
          double gap) {
    std::stable_sort(bends.begin(), bends.end(),
                     [](const Bend& a, const Bend& b) { return a.reach < b.reach; });
    double offset = 0;
    for (const Bend& bend : bends) {
        Point& corner = paths[bend.line][bend.point];
        const Point before = paths[bend.line][bend.point - 1], after = paths[bend.line][bend.point + 1],
                    from = corner;
        for (double by = offset; by > gap / 8; by /= 2) {
            const Point moved = from + bend.outward * by;
            if (obstacles.Bar(before, moved, -1e-6, -1, -1) || obstacles.Bar(moved, after, -1e-6, -1, -1))
                continue;
            corner = moved;
            break;
        }
        offset += gap;
    }
}

}  // namespace

void NestBends(std::vector<std::vector<Point>>& paths, const std::vector<Rect>& boxes, double gap) {
    std::map<std::pair<double, double>, std::vector<Bend>> corners;
    for (std::size_t line = 0; line < paths.size(); ++line) {
        const std::vector<Point>& path = paths[line];
        for (std::size_t i = 1; i + 1 < path.size(); ++i) {
            const Point in = UnitOf(path[i - 1] - path[i]), out = UnitOf(path[i + 1] - path[i]);
            const Point outward = UnitOf((in + out) * -1);
            corners[{path[i].x, path[i].y}].push_back({line, i, outward, 0});
        }
    }
    const Obstacles obstacles(boxes);
    for (auto& [corner, bends] : corners) {
        if (bends.size() < 2) continue;
        Point outward{};
        for (const Bend& bend : bends) outward = outward + bend.outward;
        outward = UnitOf(outward);
        for (Bend& bend : bends) {
            const std::vector<Point>& path = paths[bend.line];
            const Point in = UnitOf(path[bend.point - 1] - path[bend.point]);
            const Point out = UnitOf(path[bend.point + 1] - path[bend.point]);
            bend.outward = outward;
            bend.reach = (in.x + out.x) * outward.x + (in.y + out.y) * outward.y;
        }
        Nest(bends, paths, obstacles, gap);
    }
}

}  // namespace norvelis::layout
