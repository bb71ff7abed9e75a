#pragma once

#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// A door in free space, as seen by one who passes it.
struct Door {
    Point left, right;
};

/// The shortest path from start to end through all doors in turn, where nothing bars the
/// path from door to door. Lee, Preparata (1984).
std::vector<Point> ShortestThrough(Point start, const std::vector<Door>& doors, Point end);

}  // namespace norvelis::layout
