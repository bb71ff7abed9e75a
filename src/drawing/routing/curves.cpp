#include "drawing/routing/curves.h"

#include <cstddef>

#include "drawing/routing/spatial_index.h"

namespace norvelis::layout {

namespace {

std::vector<Point> Fit(const std::vector<Point>& way, double radius, const std::vector<Rect>& boxes,
                       const SpatialIndex& boxesNear) {
    if (way.size() < 3) return way;
    const auto hits = [&](Point a, Point b, Point c) {
        bool hit = false;
        boxesNear.Near(
            {std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y}), std::max({a.x, b.x, c.x}),
             std::max({a.y, b.y, c.y})},
            [&](int i) { return !(hit = TriangleHits(a, b, c, boxes[static_cast<std::size_t>(i)])); });
        return hit;
    };
    std::vector<Point> fitted{way.front()};
    for (std::size_t i = 1; i + 1 < way.size(); ++i) {
        const Point corner = way[i];
        const Point in = way[i - 1] - corner, out = way[i + 1] - corner;
        const double inLength = Length(in), outLength = Length(out);
        if (inLength <= 0 || outLength <= 0) continue;
        double reach = std::min({radius, inLength / 2, outLength / 2});
        const auto ends = [&](double r) {
            return std::pair{corner + in * (r / inLength), corner + out * (r / outLength)};
        };
        while (reach > 1e-4 && hits(ends(reach).first, corner, ends(reach).second)) reach /= 2;
        // The curve spans the middles of the corner's pieces, so the pieces are twice its reach.
        const auto [before, after] = ends(std::min(reach * 2, inLength / 2));
        if (reach * 2 < inLength - 1e-9) fitted.push_back(before);
        fitted.push_back(corner);
        const Point next = corner + out * (std::min(reach * 2, outLength / 2) / outLength);
        (void)after;
        if (reach * 2 < outLength - 1e-9) fitted.push_back(next);
    }
    fitted.push_back(way.back());
    return fitted;
}

}  // namespace

void FitCurves(std::vector<std::vector<Point>>& ways, const std::vector<Rect>& boxes, double radius) {
    Rect page = boxes.empty() ? Rect{} : boxes.front();
    for (const Rect& box : boxes)
        page = {std::min(page.x0, box.x0), std::min(page.y0, box.y0), std::max(page.x1, box.x1),
                std::max(page.y1, box.y1)};
    SpatialIndex boxesNear(page, 2.0);
    for (std::size_t i = 0; i < boxes.size(); ++i) boxesNear.Add(boxes[i], static_cast<int>(i));
    for (auto& way : ways) way = Fit(way, radius, boxes, boxesNear);
}

}  // namespace norvelis::layout
