#pragma once

#include <vector>

#include "layout/geometry/spatial_index.h"

namespace norvelis::layout {

/// The smallest rectangle around all.
Rect BoundsOf(const std::vector<Rect>& rects);

/// The boxes of the page, for the question what bars a line. The boxes must outlive it.
class Obstacles {
  public:
    explicit Obstacles(const std::vector<Rect>& boxes);

    bool Cover(const Rect& area) const;
    bool Cover(Point a, Point b, Point c) const;
    /// Whether the segment a-b passes a box but the two at less than the clearance.
    bool Bar(Point a, Point b, double clearance, int but, int orBut) const;

    /// Calls visit(box) for the boxes near the area, some more than once, until it returns false.
    template <typename F>
    void Near(const Rect& area, F&& visit) const {
        near_.Near(area, visit);
    }

  private:
    const std::vector<Rect>& boxes_;
    SpatialIndex near_;
};

}  // namespace norvelis::layout
