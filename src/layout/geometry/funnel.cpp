#include "layout/geometry/funnel.h"

#include <cstddef>

namespace norvelis::layout {

std::vector<Point> ShortestThrough(Point start, const std::vector<Door>& doors, Point end) {
    std::vector<Door> all = doors;
    all.push_back({end, end});
    std::vector<Point> path{start};
    Point apex = start, left = all.front().left, right = all.front().right;
    std::size_t leftDoor = 0, rightDoor = 0;
    const auto turns = [&](Point a, Point b) { return Cross(a - apex, b - apex); };  // > 0: b lies left of a
    const auto restart = [&](Point corner, std::size_t door) {
        if (!(corner == path.back())) path.push_back(corner);
        apex = left = right = corner;
        leftDoor = rightDoor = door;
    };
    // A corner is passed once, so that the walk ends; each restart goes back to the door of its corner.
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Point newLeft = all[i].left, newRight = all[i].right;
        if (turns(right, newRight) >= 0) {
            if (apex == right || turns(left, newRight) < 0) {
                right = newRight;
                rightDoor = i;
            } else {
                const std::size_t door = leftDoor;
                restart(left, door);
                i = door;
                continue;
            }
        }
        if (turns(left, newLeft) <= 0) {
            if (apex == left || turns(right, newLeft) > 0) {
                left = newLeft;
                leftDoor = i;
            } else {
                const std::size_t door = rightDoor;
                restart(right, door);
                i = door;
                continue;
            }
        }
    }
    if (!(path.back() == end)) path.push_back(end);
    return path;
}

}  // namespace norvelis::layout
