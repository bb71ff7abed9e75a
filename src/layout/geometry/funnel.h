#pragma once

#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// A door on the way through free space, as seen by one who passes it.
struct Door {
    Point left, right;
};

/// The shortest way from start to end through all doors in turn, where from door to door nothing is in the
/// way. Lee, Preparata (1984).
std::vector<Point> ShortestThrough(Point start, const std::vector<Door>& doors, Point end);

}  // namespace norvelis::layout
