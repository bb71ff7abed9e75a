#include "layout/geometry/corners.h"

#include <cstddef>

namespace norvelis::layout {

std::vector<Point> CornersOf(const std::vector<Point>& path) {
    constexpr double kHair = 1e-9;
    std::vector<Point> corners;
    for (const Point& point : path) {
        if (!corners.empty() && corners.back() == point) continue;
        const std::size_t n = corners.size();
        if (n > 1 && std::abs(Cross(corners[n - 1] - corners[n - 2], point - corners[n - 2])) < kHair)
            corners.pop_back();
        if (corners.empty() || !(corners.back() == point)) corners.push_back(point);
    }
    return corners.size() < 2 ? path : corners;
}

std::vector<Point> RoundCorners(const std::vector<Point>& corners, double radius) {
    std::vector<Point> points;
    for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
        const Point a = corners[i], b = corners[i + 1];
        const double length = Length(b - a), reach = 2 * radius / length;
        points.push_back(a);
        if (length > 4 * radius) {
            points.push_back(Between(a, b, reach));
            points.push_back(Between(a, b, 1 - reach));
        } else if (length > 2 * radius) {
            points.push_back(Between(a, b, 0.5));
        }
    }
    points.push_back(corners.back());
    return points;
}

}  // namespace norvelis::layout
