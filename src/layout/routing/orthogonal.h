#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/route_rule.h"
#include "layout/routing/line_paths.h"

namespace norvelis::layout {

/// Horizontal and vertical segments. A corridor is searched for each line, short lines first; its segments
/// then take the free tracks nearest to where they would be alone. Wybrow, Marriott, Stuckey: Orthogonal
/// connector routing (2009).
LinePaths RouteOrthogonally(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                            const RouteRule& rule, double lineGap);

}  // namespace norvelis::layout
