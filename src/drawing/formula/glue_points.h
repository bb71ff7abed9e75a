#pragma once

#include <algorithm>
#include <cmath>

#include "base/geometry.h"

// Where a line that is glued to a whole box meets its border before anyone has routed it.
namespace norvelis::drawing::glue {

struct Block {
    double left = 0, bottom = 0, width = 0, height = 0;
    bool operator==(const Block&) const = default;

    Point Middle() const { return {left + width / 2, bottom + height / 2}; }

    /// The border point on the straight line from the middle to `target`; the middle of the upper border when
    /// the target is the middle itself.
    Point BorderTowards(Point target) const {
        const Point middle = Middle();
        const double dx = target.x - middle.x, dy = target.y - middle.y;
        if (dx == 0 && dy == 0) return {middle.x, bottom + height};
        const double reachX = dx == 0 ? HUGE_VAL : std::fabs(width / 2 / dx);
        const double reachY = dy == 0 ? HUGE_VAL : std::fabs(height / 2 / dy);
        const double reach = std::min(reachX, reachY);
        return {middle.x + dx * reach, middle.y + dy * reach};
    }

    bool HasOnBorder(Point point) const {
        constexpr double kNear = 1e-6;
        const double inX = std::min(point.x - left, left + width - point.x);
        const double inY = std::min(point.y - bottom, bottom + height - point.y);
        return std::min(inX, inY) > -kNear && std::min(std::fabs(inX), std::fabs(inY)) < kNear;
    }

    /// A line from a box to itself leaves on the right and comes back from above.
    Point LoopEnd(bool begin) const {
        return begin ? Point{left + width, bottom + height / 2} : Point{left + width / 2, bottom + height};
    }
};

}  // namespace norvelis::drawing::glue
