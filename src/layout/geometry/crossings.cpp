#include "layout/geometry/crossings.h"

#include <algorithm>
#include <tuple>

namespace norvelis::layout {

namespace {

Rect BoundsOfPaths(const std::vector<std::vector<Point>>& paths) {
    Rect page{1e300, 1e300, -1e300, -1e300};
    for (const auto& path : paths)
        for (const Point& p : path)
            page = {std::min(page.x0, p.x), std::min(page.y0, p.y), std::max(page.x1, p.x),
                    std::max(page.y1, p.y)};
    return page.x0 <= page.x1 ? page : Rect{};
}

}  // namespace

CrossingFinder::CrossingFinder(const std::vector<std::vector<Point>>& paths)
    : paths_(paths), near_(BoundsOfPaths(paths), 1.0), firstSegment_(paths.size()) {
    for (std::size_t path = 0; path < paths.size(); ++path) Update(path);
}

void CrossingFinder::Update(std::size_t path) {
    firstSegment_[path] = segments_.size();
    const std::vector<Point>& points = paths_[path];
    for (std::size_t i = 1; i < points.size(); ++i) {
        near_.AddSegment(points[i - 1], points[i], static_cast<int>(segments_.size()));
        segments_.push_back({path, i - 1, points[i - 1], points[i]});
    }
    lastSeenBy_.resize(segments_.size());
}

/// Exactly on segments that are horizontal or vertical.
Point CrossingFinder::Meeting(const Segment& p, const Segment& q) {
    const Point along = p.b - p.a, across = q.b - q.a;
    Point at = p.a + along * (Cross(q.a - p.a, across) / Cross(along, across));
    for (const Segment* segment : {&p, &q}) {
        if (segment->a.x == segment->b.x) at.x = segment->a.x;
        if (segment->a.y == segment->b.y) at.y = segment->a.y;
    }
    return at;
}

/// Those with lower paths that are wanted are found on these.
void CrossingFinder::FindOn(std::size_t id, const std::vector<char>& isWanted,
                            std::vector<Crossing>& crossings) {
    constexpr double kPiece =
        4;  // inches of a slanting segment, which passes few of the squares of its bounds
    const Segment& segment = segments_[id];
    const int parts = 1 + static_cast<int>(Length(segment.b - segment.a) / kPiece);
    ++search_;
    for (int part = 0; part < parts; ++part) {
        const Point from = Between(segment.a, segment.b, static_cast<double>(part) / parts);
        const Point to = Between(segment.a, segment.b, static_cast<double>(part + 1) / parts);
        near_.Near(RectOf(from, to), [&](int near) {
            const auto i = static_cast<std::size_t>(near);
            if (lastSeenBy_[i] == search_) return true;
            lastSeenBy_[i] = search_;
            const Segment& other = segments_[i];
            if (other.path == segment.path || i < firstSegment_[other.path]) return true;
            if (other.path < segment.path && isWanted[other.path]) return true;
            const Segment& first = other.path < segment.path ? other : segment;
            const Segment& second = other.path < segment.path ? segment : other;
            if (SegmentsCross(first.a, first.b, second.a, second.b))
                crossings.push_back(
                    {first.path, second.path, first.number, second.number, Meeting(first, second)});
            return true;
        });
    }
}

std::vector<Crossing> CrossingFinder::Find(const std::vector<char>& isWanted) {
    std::vector<Crossing> crossings;
    for (std::size_t path = 0; path < paths_.size(); ++path) {
        if (!isWanted[path]) continue;
        for (std::size_t i = 1; i < paths_[path].size(); ++i)
            FindOn(firstSegment_[path] + i - 1, isWanted, crossings);
    }
    const auto isBefore = [&](const Crossing& a, const Crossing& b) {
        if (a.first != b.first || a.second != b.second || a.firstSegment != b.firstSegment)
            return std::tie(a.first, a.second, a.firstSegment) < std::tie(b.first, b.second, b.firstSegment);
        const Point start = paths_[a.first][a.firstSegment];
        const double alongA = Length(a.at - start), alongB = Length(b.at - start);
        return alongA != alongB ? alongA < alongB : a.secondSegment < b.secondSegment;
    };
    std::sort(crossings.begin(), crossings.end(), isBefore);
    return crossings;
}

std::vector<Crossing> CrossingsOf(const std::vector<std::vector<Point>>& paths) {
    return CrossingFinder(paths).Find(std::vector<char>(paths.size(), 1));
}

}  // namespace norvelis::layout
