#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/routing/candidate_paths.h"
#include "layout/routing/route_style.h"

namespace norvelis::layout {

/// Level and upright pieces. A corridor is searched for each line, short lines first; its pieces then take
/// the free tracks nearest to where they would stand alone. Wybrow, Marriott, Stuckey: Orthogonal connector
/// routing (2009).
Ways RouteOrthogonally(const std::vector<Rect>& boxes, const std::vector<Line>& lines, const RouteRule& rule,
                       double lineGap);

}  // namespace norvelis::layout
