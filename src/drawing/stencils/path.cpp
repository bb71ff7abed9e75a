#include "drawing/stencils/path.h"

namespace norvelis::drawing::stencils {

Path& Path::Move(double x, double y) {
    start_ = {x, y};
    segments_.push_back({Segment::Move, start_, {}, {}});
    return *this;
}

Path& Path::Line(double x, double y) {
    segments_.push_back({Segment::Line, {x, y}, {}, {}});
    return *this;
}

Path& Path::Curve(double x1, double y1, double x2, double y2, double x, double y) {
    segments_.push_back({Segment::Curve, {x, y}, {x1, y1}, {x2, y2}});
    return *this;
}

Path& Path::Close() {
    return Line(start_.x, start_.y);
}

Path& Path::Rectangle(double left, double bottom, double right, double top) {
    return Polygon({{left, bottom}, {right, bottom}, {right, top}, {left, top}});
}

Path& Path::Ellipse(double x, double y, double radiusX, double radiusY) {
    const double kappa = 0.5522847498;  // Quarter of a circle as one cubic curve.
    const double kx = radiusX * kappa, ky = radiusY * kappa;
    Move(x + radiusX, y);
    Curve(x + radiusX, y + ky, x + kx, y + radiusY, x, y + radiusY);
    Curve(x - kx, y + radiusY, x - radiusX, y + ky, x - radiusX, y);
    Curve(x - radiusX, y - ky, x - kx, y - radiusY, x, y - radiusY);
    return Curve(x + kx, y - radiusY, x + radiusX, y - ky, x + radiusX, y);
}

Path& Path::Polygon(std::initializer_list<Point> corners) {
    return Polygon(std::vector<Point>(corners));
}

Path& Path::Polygon(const std::vector<Point>& corners) {
    Polyline(corners);
    return Close();
}

Path& Path::Polyline(const std::vector<Point>& points) {
    bool first = true;
    for (const Point& point : points) {
        if (first)
            Move(point.x, point.y);
        else
            Line(point.x, point.y);
        first = false;
    }
    return *this;
}

Path& Path::Smooth(const std::vector<Point>& points, bool join) {
    if (points.empty()) return *this;
    if (join)
        Line(points.front().x, points.front().y);
    else
        Move(points.front().x, points.front().y);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const Point& before = points[i == 0 ? 0 : i - 1];
        const Point& after = points[i + 2 < points.size() ? i + 2 : i + 1];
        Through(before, points[i], points[i + 1], after);
    }
    return *this;
}

Path& Path::SmoothClosed(const std::vector<Point>& points) {
    const std::size_t count = points.size();
    if (count < 3) return *this;
    Move(points.front().x, points.front().y);
    for (std::size_t i = 0; i < count; ++i)
        Through(points[(i + count - 1) % count], points[i], points[(i + 1) % count], points[(i + 2) % count]);
    return *this;
}

void Path::Through(Point before, Point from, Point to, Point after) {
    Curve(from.x + (to.x - before.x) / 6, from.y + (to.y - before.y) / 6, to.x - (after.x - from.x) / 6,
          to.y - (after.y - from.y) / 6, to.x, to.y);
}

}  // namespace norvelis::drawing::stencils
