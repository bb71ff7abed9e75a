#include "base/geometry.h"

#include <cstddef>

namespace norvelis {

double LengthOf(const std::vector<Point>& path) {
    double length = 0;
    for (std::size_t i = 1; i < path.size(); ++i) length += Length(path[i] - path[i - 1]);
    return length;
}

bool ClipSegment(Point a, Point b, const Rect& rect, double& enters, double& leaves) {
    enters = 0;
    leaves = 1;
    const Point path = b - a;
    const struct {
        double step, space;
    } borders[] = {
        {-path.x, a.x - rect.x0}, {path.x, rect.x1 - a.x}, {-path.y, a.y - rect.y0}, {path.y, rect.y1 - a.y}};
    for (const auto& border : borders) {
        if (border.step == 0) {
            if (border.space <= 0) return false;
        } else if (border.step < 0) {
            enters = std::max(enters, border.space / border.step);
        } else {
            leaves = std::min(leaves, border.space / border.step);
        }
    }
    return enters < leaves;
}

bool SegmentHits(Point a, Point b, const Rect& rect) {
    double enters, leaves;
    return ClipSegment(a, b, rect, enters, leaves);
}

bool TriangleHits(Point a, Point b, Point c, const Rect& rect) {
    const Rect bounds{std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y}), std::max({a.x, b.x, c.x}),
                      std::max({a.y, b.y, c.y})};
    if (!Overlap(bounds, rect)) return false;
    if (Cross(b - a, c - a) == 0)
        return SegmentHits(a, b, rect) || SegmentHits(b, c, rect) || SegmentHits(a, c, rect);
    // The axes' directions do not separate the two; a side of the triangle may.
    const Point corners[] = {{rect.x0, rect.y0}, {rect.x1, rect.y0}, {rect.x1, rect.y1}, {rect.x0, rect.y1}};
    const Point triangle[] = {a, b, c};
    for (int i = 0; i < 3; ++i) {
        const Point from = triangle[i], side = triangle[(i + 1) % 3] - from;
        const double inner = Cross(side, triangle[(i + 2) % 3] - from);
        bool apart = true;
        for (const Point& corner : corners) {
            const double at = Cross(side, corner - from);
            if (inner > 0 ? at > 0 : at < 0) apart = false;
        }
        if (apart) return false;
    }
    return true;
}

std::vector<Point> AroundRect(Point a, Point b, const Rect& rect, double side) {
    if (rect.Holds(a) || rect.Holds(b)) return {};
    std::vector<Point> corners;
    for (const Point corner :
         {Point{rect.x0, rect.y0}, Point{rect.x1, rect.y0}, Point{rect.x1, rect.y1}, Point{rect.x0, rect.y1}})
        if (Cross(b - a, corner - a) * side > 0) corners.push_back(corner);
    const Point path = b - a;
    std::sort(corners.begin(), corners.end(), [&](Point p, Point q) {
        return (p.x - a.x) * path.x + (p.y - a.y) * path.y < (q.x - a.x) * path.x + (q.y - a.y) * path.y;
    });
    corners.push_back(b);
    std::vector<Point> chain{a};
    for (const Point corner : corners) {
        while (chain.size() > 1 &&
               Cross(chain.back() - chain[chain.size() - 2], corner - chain[chain.size() - 2]) * side >= 0)
            chain.pop_back();
        chain.push_back(corner);
    }
    return chain;
}

bool SegmentsCross(Point a, Point b, Point c, Point d) {
    const double c1 = Cross(b - a, c - a), c2 = Cross(b - a, d - a);
    const double a1 = Cross(d - c, a - c), a2 = Cross(d - c, b - c);
    return ((c1 > 0 && c2 < 0) || (c1 < 0 && c2 > 0)) && ((a1 > 0 && a2 < 0) || (a1 < 0 && a2 > 0));
}

}  // namespace norvelis
