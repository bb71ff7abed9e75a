#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// Radial placement: the box with the most reach (owner to member, the most others below it) in the middle,
/// the others on rings by their distance from it, every subtree in a sector as wide as it has boxes. Rings
/// are ellipses, since boxes are wide, and a ring with many boxes has several lanes, so that the picture
/// stays compact. No two boxes come closer than the style's gaps, whatever the sizes. `placeDepth` sets how
/// tightly the rings are.
///
/// Yee, Fisher, Dhamija, Hearst: Animated exploration of dynamic graphs with radial layout (2001), for the
/// sectors; Wills: NicheWorks (1997), for the rings.
///
/// The graph should be connected; boxes that the middle does not reach are on the outermost ring.
std::vector<Point> PlaceRadial(const Graph& graph, const Style& style);

}  // namespace norvelis::layout
