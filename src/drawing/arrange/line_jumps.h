#pragma once

#include <vector>

#include "drawing/session/connectors.h"
#include "layout/graph/graph.h"

namespace norvelis::drawing {

/// Where each route jumps over others: its horizontal segments over those that cross them inside both. Curved
/// routes neither jump nor are jumped over. Jumps that would touch are one.
std::vector<std::vector<LineJump>> FindJumps(const std::vector<layout::Route>& routes);

}  // namespace norvelis::drawing
