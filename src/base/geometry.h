#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

// Points, rectangles, line segments and triangles of a plane. x grows to the right, y upwards, as on a page;
// the unit is the caller's (inches in layouts and drawings).
namespace norvelis {

struct Point {
    double x = 0, y = 0;
    bool operator==(const Point&) const = default;
};

struct Rect {
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;

    double Width() const { return x1 - x0; }
    double Height() const { return y1 - y0; }
    Point Center() const { return {(x0 + x1) / 2, (y0 + y1) / 2}; }
    Rect Grown(double by) const { return {x0 - by, y0 - by, x1 + by, y1 + by}; }
    bool Holds(Point p) const { return p.x > x0 && p.x < x1 && p.y > y0 && p.y < y1; }
};

inline Rect RectAround(Point center, double width, double height) {
    return {center.x - width / 2, center.y - height / 2, center.x + width / 2, center.y + height / 2};
}

inline Rect RectOf(Point a, Point b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

inline bool Overlap(const Rect& a, const Rect& b) {
    return a.x0 < b.x1 && b.x0 < a.x1 && a.y0 < b.y1 && b.y0 < a.y1;
}

inline Point operator+(Point a, Point b) {
    return {a.x + b.x, a.y + b.y};
}
inline Point operator-(Point a, Point b) {
    return {a.x - b.x, a.y - b.y};
}
inline Point operator*(Point a, double by) {
    return {a.x * by, a.y * by};
}
inline double Cross(Point a, Point b) {
    return a.x * b.y - a.y * b.x;
}
inline double Length(Point a) {
    return std::hypot(a.x, a.y);
}
inline Point Between(Point a, Point b, double part) {
    return a + (b - a) * part;
}

double LengthOf(const std::vector<Point>& path);

/// The part of the segment a-b that lies in the rectangle, as shares of the path from a; false when there is
/// none.
bool ClipSegment(Point a, Point b, const Rect& rect, double& enters, double& leaves);

/// Whether the segment a-b runs through the inside of the rectangle; touching the border is not enough.
bool SegmentHits(Point a, Point b, const Rect& rect);

/// Whether the triangle and the inside of the rectangle share a point.
bool TriangleHits(Point a, Point b, Point c, const Rect& rect);

/// The taut string from a to b around the rectangle on one side of the straight path, 1 left and -1 right;
/// nothing when an end lies in the rectangle.
std::vector<Point> AroundRect(Point a, Point b, const Rect& rect, double side);

/// Whether two segments cross in a point inside both.
bool SegmentsCross(Point a, Point b, Point c, Point d);

}  // namespace norvelis
