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

Point UnitOf(Point way) {
    const double length = Length(way);
    return length > 0 ? way * (1 / length) : way;
}

void Nest(std::vector<Bend>& bends, std::vector<std::vector<Point>>& ways, const Obstacles& obstacles,
          double gap) {
    std::stable_sort(bends.begin(), bends.end(),
                     [](const Bend& a, const Bend& b) { return a.reach < b.reach; });
    double offset = 0;
    for (const Bend& bend : bends) {
        Point& corner = ways[bend.line][bend.point];
        const Point before = ways[bend.line][bend.point - 1], after = ways[bend.line][bend.point + 1],
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

void NestBends(std::vector<std::vector<Point>>& ways, const std::vector<Rect>& boxes, double gap) {
    std::map<std::pair<double, double>, std::vector<Bend>> corners;
    for (std::size_t line = 0; line < ways.size(); ++line) {
        const std::vector<Point>& way = ways[line];
        for (std::size_t i = 1; i + 1 < way.size(); ++i) {
            const Point in = UnitOf(way[i - 1] - way[i]), out = UnitOf(way[i + 1] - way[i]);
            const Point outward = UnitOf((in + out) * -1);
            corners[{way[i].x, way[i].y}].push_back({line, i, outward, 0});
        }
    }
    const Obstacles obstacles(boxes);
    for (auto& [corner, bends] : corners) {
        if (bends.size() < 2) continue;
        Point outward{};
        for (const Bend& bend : bends) outward = outward + bend.outward;
        outward = UnitOf(outward);
        for (Bend& bend : bends) {
            const std::vector<Point>& way = ways[bend.line];
            const Point in = UnitOf(way[bend.point - 1] - way[bend.point]);
            const Point out = UnitOf(way[bend.point + 1] - way[bend.point]);
            bend.outward = outward;
            bend.reach = (in.x + out.x) * outward.x + (in.y + out.y) * outward.y;
        }
        Nest(bends, ways, obstacles, gap);
    }
}

}  // namespace norvelis::layout
