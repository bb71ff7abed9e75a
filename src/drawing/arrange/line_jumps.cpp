#include "drawing/arrange/line_jumps.h"

#include <algorithm>
#include <cmath>

#include "layout/geometry/spatial_index.h"

namespace norvelis::drawing {

namespace {

constexpr double kHalf = 0.04;   // Inches from a crossing to either end of its jump.
constexpr double kLevel = 1e-6;  // What counts as horizontal.
constexpr double kSquare = 1;

bool IsLevel(Point a, Point b) {
    return std::fabs(a.y - b.y) < kLevel;
}

/// Every segment of the straight routes that is not horizontal.
class Crossed {
  public:
    explicit Crossed(const std::vector<layout::Route>& routes) : index_(AreaOf(routes), kSquare) {
        for (const layout::Route& route : routes) {
            if (route.curved) continue;
            for (std::size_t i = 1; i < route.points.size(); ++i) {
                const Point a = route.points[i - 1], b = route.points[i];
                if (IsLevel(a, b)) continue;
                index_.AddSegment(a, b, static_cast<int>(segments_.size()));
                segments_.emplace_back(a, b);
            }
        }
    }

    /// The places on the horizontal segment that others cross, from left to right, far enough from its ends
    /// for a jump.
    std::vector<double> Crossings(Point a, Point b) const {
        const double left = std::min(a.x, b.x) + 2 * kHalf, right = std::max(a.x, b.x) - 2 * kHalf;
        std::vector<double> places;
        index_.Near(RectOf(a, b), [&](int id) {
            const auto& [from, to] = segments_[static_cast<std::size_t>(id)];
            const double part = (a.y - from.y) / (to.y - from.y);
            const double x = from.x + (to.x - from.x) * part;
            if (part > 0 && part < 1 && x > left && x < right) places.push_back(x);
            return true;
        });
        std::ranges::sort(places);
        places.erase(std::unique(places.begin(), places.end()), places.end());
        return places;
    }

  private:
    static Rect AreaOf(const std::vector<layout::Route>& routes) {
        Rect area;
        for (const layout::Route& route : routes) {
            for (const Point& point : route.points) {
                area = {std::min(area.x0, point.x), std::min(area.y0, point.y), std::max(area.x1, point.x),
                        std::max(area.y1, point.y)};
            }
        }
        return area;
    }

    layout::SpatialIndex index_;
    std::vector<std::pair<Point, Point>> segments_;
};

}  // namespace

std::vector<std::vector<LineJump>> FindJumps(const std::vector<layout::Route>& routes) {
    const Crossed crossed(routes);
    std::vector<std::vector<LineJump>> jumps(routes.size());
    for (std::size_t k = 0; k < routes.size(); ++k) {
        const std::vector<Point>& points = routes[k].points;
        for (std::size_t i = 0; !routes[k].curved && i + 1 < points.size(); ++i) {
            if (!IsLevel(points[i], points[i + 1])) continue;
            std::vector<LineJump> found;
            for (const double x : crossed.Crossings(points[i], points[i + 1])) {
                if (!found.empty() && x - kHalf <= found.back().to)
                    found.back().to = x + kHalf;
                else
                    found.push_back({i, x - kHalf, x + kHalf});
            }
            if (points[i + 1].x < points[i].x) {  // In the direction of the line.
                std::ranges::reverse(found);
                for (LineJump& jump : found) std::swap(jump.from, jump.to);
            }
            jumps[k].insert(jumps[k].end(), found.begin(), found.end());
        }
    }
    return jumps;
}

}  // namespace norvelis::drawing
