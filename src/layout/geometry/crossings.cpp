#include "layout/geometry/crossings.h"

#include <algorithm>
#include <tuple>

#include "layout/geometry/spatial_index.h"

namespace norvelis::layout {

namespace {

struct Segment {
    std::size_t path, number;
    Point a, b;
};

/// Exactly on segments that are horizontal or vertical.
Point Meeting(const Segment& p, const Segment& q) {
    const Point along = p.b - p.a, across = q.b - q.a;
    Point at = p.a + along * (Cross(q.a - p.a, across) / Cross(along, across));
    for (const Segment* segment : {&p, &q}) {
        if (segment->a.x == segment->b.x) at.x = segment->a.x;
        if (segment->a.y == segment->b.y) at.y = segment->a.y;
    }
    return at;
}

}  // namespace

std::vector<Crossing> CrossingsOf(const std::vector<std::vector<Point>>& paths) {
    constexpr double kPiece =
        4;  // inches of a slanting segment, which passes few of the squares of its bounds
    std::vector<Segment> segments;
    Rect page{1e300, 1e300, -1e300, -1e300};
    for (std::size_t path = 0; path < paths.size(); ++path) {
        for (std::size_t i = 1; i < paths[path].size(); ++i) {
            const Point a = paths[path][i - 1], b = paths[path][i];
            page = {std::min({page.x0, a.x, b.x}), std::min({page.y0, a.y, b.y}),
                    std::max({page.x1, a.x, b.x}), std::max({page.y1, a.y, b.y})};
            segments.push_back({path, i - 1, a, b});
        }
    }
    if (segments.empty()) return {};
    SpatialIndex near(page, 1.0);
    std::vector<std::size_t> lastSeenBy(segments.size(), segments.size());
    std::vector<Crossing> crossings;
    for (std::size_t k = 0; k < segments.size(); ++k) {
        const Segment& segment = segments[k];
        const int parts = 1 + static_cast<int>(Length(segment.b - segment.a) / kPiece);
        for (int part = 0; part < parts; ++part) {
            const Point from = Between(segment.a, segment.b, static_cast<double>(part) / parts);
            const Point to = Between(segment.a, segment.b, static_cast<double>(part + 1) / parts);
            near.Near(RectOf(from, to), [&](int id) {
                const auto i = static_cast<std::size_t>(id);
                const Segment& other = segments[i];
                if (other.path == segment.path || lastSeenBy[i] == k) return true;
                lastSeenBy[i] = k;
                if (SegmentsCross(other.a, other.b, segment.a, segment.b))
                    crossings.push_back(
                        {other.path, segment.path, other.number, segment.number, Meeting(other, segment)});
                return true;
            });
        }
        near.AddSegment(segment.a, segment.b, static_cast<int>(k));
    }
    const auto isBefore = [&](const Crossing& a, const Crossing& b) {
        if (a.first != b.first || a.second != b.second || a.firstSegment != b.firstSegment)
            return std::tie(a.first, a.second, a.firstSegment) < std::tie(b.first, b.second, b.firstSegment);
        const Point start = paths[a.first][a.firstSegment];
        const double alongA = Length(a.at - start), alongB = Length(b.at - start);
        return alongA != alongB ? alongA < alongB : a.secondSegment < b.secondSegment;
    };
    std::sort(crossings.begin(), crossings.end(), isBefore);
    return crossings;
}

}  // namespace norvelis::layout
