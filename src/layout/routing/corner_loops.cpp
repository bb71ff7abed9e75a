#include "layout/routing/corner_loops.h"

#include <array>

namespace norvelis::layout {

namespace {

struct Corner {
    double right, up;  ///< 1 or -1: where the corner is, seen from the box's middle.
    int count = 0;     ///< Loops around it.
    double reach = 0;  ///< Of the outermost, above or below the box.
    double ahead = 0;  ///< And beside it.
};

std::vector<Point> Around(const Rect& box, const Corner& corner, const Line& line, double lineGap) {
    const double first = 0.12 * (corner.count + 1);  // share of the half side
    const Point middle = box.Center();
    const double inX = box.Width() / 2 * (1 - std::min(first, 0.9)),
                 inY = box.Height() / 2 * (1 - std::min(first, 0.9));
    const double reach = corner.reach + lineGap + line.labelHeight;
    const double labelRun = line.labelWidth + 2 * lineGap;  // the label is on this segment
    const double ahead = std::max(corner.ahead + lineGap, labelRun - (box.Width() / 2 - inX));
    const auto at = [&](double x, double y) { return middle + Point{corner.right * x, corner.up * y}; };
    const double outX = box.Width() / 2 + ahead, outY = box.Height() / 2 + reach;
    return {at(inX, box.Height() / 2), at(inX, outY), at(outX, outY), at(outX, inY),
            at(box.Width() / 2, inY)};
}

}  // namespace

std::vector<std::vector<Point>> LoopsAroundCorners(const Rect& box, const std::vector<Line>& lines,
                                                   const Obstacles& obstacles, double lineGap) {
    std::array<Corner, 4> corners{{{1, 1}, {-1, 1}, {1, -1}, {-1, -1}}};
    std::vector<std::vector<Point>> loops;
    for (const Line& line : lines) {
        std::stable_sort(corners.begin(), corners.end(),
                         [](const Corner& a, const Corner& b) { return a.count < b.count; });
        std::vector<Point> loop;
        for (Corner& corner : corners) {
            std::vector<Point> path = Around(box, corner, line, lineGap);
            bool free = true;
            for (std::size_t i = 1; i < path.size() && free; ++i)
                free = !obstacles.Bar(path[i - 1], path[i], -1e-6, -1, -1);
            for (std::size_t i = 2; i + 1 < path.size() && free; ++i)
                free = !obstacles.Bar(path[i - 1], path[i], lineGap / 2, -1, -1);
            if (!free) continue;
            ++corner.count;
            corner.reach = std::abs(path[1].y - path[0].y);
            corner.ahead = std::abs(path[3].x - path[4].x);
            loop = std::move(path);
            break;
        }
        loops.push_back(std::move(loop));
    }
    return loops;
}

}  // namespace norvelis::layout
