#pragma once

#include <cstddef>
#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// Things with bounds on the page, kept in the squares of a uniform grid. What lies outside the page the
/// index was made for counts for the nearest squares at its margin, so that nothing is lost.
class SpatialIndex {
  public:
    SpatialIndex(const Rect& page, double square)
        : page_(page),
          square_(std::max(square, std::max(page.Width(), page.Height()) / 400)),
          columns_(1 + static_cast<std::size_t>(std::max(0.0, page.Width()) / square_)),
          rows_(1 + static_cast<std::size_t>(std::max(0.0, page.Height()) / square_)),
          squares_(columns_ * rows_) {}

    void Add(const Rect& bounds, int id) {
        Visit(bounds, [&](std::vector<int>& square) {
            square.push_back(id);
            return true;
        });
    }

    /// A straight segment, only in the squares that it passes.
    void AddSegment(Point a, Point b, int id) {
        const double path = Length(b - a);
        const int parts = 1 + static_cast<int>(path / (square_ * 4));
        for (int i = 0; i < parts; ++i) {
            const Rect bounds = RectOf(Between(a, b, static_cast<double>(i) / parts),
                                       Between(a, b, static_cast<double>(i + 1) / parts));
            Visit(bounds, [&](std::vector<int>& square) {
                if (square.empty() || square.back() != id) square.push_back(id);
                return true;
            });
        }
    }

    /// Calls visit(id) for all things near the area, some of them more than once, until it returns false.
    template <typename F>
    void Near(const Rect& area, F&& visit) const {
        const_cast<SpatialIndex*>(this)->Visit(area, [&](const std::vector<int>& square) {
            for (const int id : square)
                if (!visit(id)) return false;
            return true;
        });
    }

  private:
    template <typename F>
    void Visit(const Rect& area, F&& visit) {
        const std::size_t x0 = Slot(area.x0 - page_.x0, columns_), x1 = Slot(area.x1 - page_.x0, columns_);
        const std::size_t y0 = Slot(area.y0 - page_.y0, rows_), y1 = Slot(area.y1 - page_.y0, rows_);
        for (std::size_t y = y0; y <= y1; ++y)
            for (std::size_t x = x0; x <= x1; ++x)
                if (!visit(squares_[y * columns_ + x])) return;
    }
    std::size_t Slot(double distance, std::size_t count) const {
        if (!(distance > 0)) return 0;
        return std::min(count - 1, static_cast<std::size_t>(distance / square_));
    }

    Rect page_;
    double square_;
    std::size_t columns_, rows_;
    std::vector<std::vector<int>> squares_;
};

}  // namespace norvelis::layout
