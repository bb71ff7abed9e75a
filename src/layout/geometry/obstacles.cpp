#include "layout/geometry/obstacles.h"

#include <cstddef>

namespace norvelis::layout {

Rect BoundsOf(const std::vector<Rect>& rects) {
    Rect bounds = rects.empty() ? Rect{} : rects.front();
    for (const Rect& rect : rects)
        bounds = {std::min(bounds.x0, rect.x0), std::min(bounds.y0, rect.y0), std::max(bounds.x1, rect.x1),
                  std::max(bounds.y1, rect.y1)};
    return bounds;
}

Obstacles::Obstacles(const std::vector<Rect>& boxes) : boxes_(boxes), near_(BoundsOf(boxes), 2.0) {
    for (std::size_t i = 0; i < boxes.size(); ++i) near_.Add(boxes[i], static_cast<int>(i));
}

bool Obstacles::Cover(const Rect& area) const {
    bool covered = false;
    near_.Near(area, [&](int i) { return !(covered = Overlap(area, boxes_[static_cast<std::size_t>(i)])); });
    return covered;
}

bool Obstacles::Cover(Point a, Point b, Point c) const {
    const Rect area{std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y}), std::max({a.x, b.x, c.x}),
                    std::max({a.y, b.y, c.y})};
    bool covered = false;
    near_.Near(
        area, [&](int i) { return !(covered = TriangleHits(a, b, c, boxes_[static_cast<std::size_t>(i)])); });
    return covered;
}

bool Obstacles::Bar(Point a, Point b, double clearance, int but, int orBut) const {
    const int parts = 1 + static_cast<int>(Length(b - a) / 8);
    for (int k = 0; k < parts; ++k) {  // a slanting segment passes few of the squares of its bounds
        const Point from = Between(a, b, static_cast<double>(k) / parts);
        const Point to = Between(a, b, static_cast<double>(k + 1) / parts);
        bool barred = false;
        near_.Near(RectOf(from, to).Grown(clearance), [&](int i) {
            if (i == but || i == orBut) return true;
            return !(barred = SegmentHits(from, to, boxes_[static_cast<std::size_t>(i)].Grown(clearance)));
        });
        if (barred) return true;
    }
    return false;
}

}  // namespace norvelis::layout
