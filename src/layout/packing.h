#pragma once

#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// How to move parts, each a set of rectangles, so that they are on a common page, its lower left corner at
/// (0, 0), no two closer than `gap`. Small parts go into the empty corners of great ones but never inside
/// them. The page is as small as can be, no wider than 2.5 times its height and no higher than 1.25 times its
/// width where that can be had. Freivalds, Dogrusoz, Kikusts: Disconnected graph layout and the polyomino
/// packing approach (2002).
std::vector<Point> PackParts(const std::vector<std::vector<Rect>>& parts, double gap);

}  // namespace norvelis::layout
