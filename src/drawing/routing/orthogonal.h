#pragma once

#include <vector>

#include "drawing/routing/route_style.h"

namespace norvelis::layout {

/// The ways of all lines, before their corners are rounded and their labels placed.
struct Ways {
    std::vector<std::vector<Point>> points;
    int crowded = 0;  ///< Pieces that stand closer to others than the line gap.
};

/// Level and upright pieces. A corridor is searched for each line, short lines first; its pieces then take
/// the free tracks nearest to where they would stand alone. Wybrow, Marriott, Stuckey: Orthogonal connector
/// routing (2009).
Ways RouteOrthogonally(const std::vector<Rect>& boxes, const std::vector<Line>& lines, const RouteRule& rule,
                       double lineGap);

/// The order in which lines are routed: short ones, which have the least choice, first.
std::vector<int> ShortLinesFirst(const std::vector<Rect>& boxes, const std::vector<Line>& lines);

}  // namespace norvelis::layout
