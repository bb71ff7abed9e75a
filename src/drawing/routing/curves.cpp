#include "drawing/routing/curves.h"

#include <cstddef>

#include "drawing/routing/obstacles.h"

namespace norvelis::layout {

namespace {

std::vector<Point> Fit(const std::vector<Point>& way, double radius, const Obstacles& obstacles) {
    if (way.size() < 3) return way;
    std::vector<Point> fitted{way.front()};
    for (std::size_t i = 1; i + 1 < way.size(); ++i) {
        const Point corner = way[i];
        const Point in = way[i - 1] - corner, out = way[i + 1] - corner;
        const double inLength = Length(in), outLength = Length(out);
        if (inLength <= 0 || outLength <= 0) continue;
        // The curve spans the middles of the corner's pieces, so the pieces are twice as long as it reaches;
        // two corners share the piece between them.
        double size = 2 * radius;
        const auto before = [&] { return corner + in * (std::min(size, inLength / 2) / inLength); };
        const auto after = [&] { return corner + out * (std::min(size, outLength / 2) / outLength); };
        while (size > 1e-4 &&
               obstacles.Cover(Between(corner, before(), 0.5), corner, Between(corner, after(), 0.5)))
            size /= 2;
        if (!(before() == fitted.back())) fitted.push_back(before());
        fitted.push_back(corner);
        fitted.push_back(after());
    }
    fitted.push_back(way.back());
    return fitted;
}

}  // namespace

void FitCurves(std::vector<std::vector<Point>>& ways, const std::vector<Rect>& boxes, double radius) {
    const Obstacles obstacles(boxes);
    for (auto& way : ways) way = Fit(way, radius, obstacles);
}

}  // namespace norvelis::layout
