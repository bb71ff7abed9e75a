#pragma once

#include <optional>
#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// How to move parts, each a set of rectangles, so that they are on a common page, its lower left corner at
/// (0, 0), no two closer than `gap`. Small parts go into the empty corners of great ones but never inside
/// them. The page is the one that can be largest on a sheet, which rather lies on its long side. Freivalds,
/// Dogrusoz, Kikusts: Disconnected graph layout and the polyomino packing approach (2002).
///
/// `wishes`: for each part the move that leaves it where it was on the page of before, none for a new part;
/// empty where there was no page. Parts with a wish go as near to it as others leave space, and new ones to
/// free places.
std::vector<Point> PackParts(const std::vector<std::vector<Rect>>& parts, double gap,
                             const std::vector<std::optional<Point>>& wishes = {});

}  // namespace norvelis::layout
