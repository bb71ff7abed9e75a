#pragma once

#include "base/geometry.h"

namespace norvelis::layout {

/// The published route styles by what they do.
enum class RouteFamily {
    RightAngle,  ///< 0, 1: level and upright pieces, whichever way is short.
    Straight,    ///< 2, 9, 16: one piece where boxes let it pass. 16 aims at the middles of both boxes.
    Tree,        ///< 3, 4, 7, 8, 10, 11, 14, 15: right angles, lines of one owner share a trunk.
    Flowchart,   ///< 5, 6, 12, 13: right angles, with the flow from side to opposite side.
    Simple       ///< 17 to 22: right angles with one or two bends.
};

enum class Side { Left, Right, Bottom, Top };

struct RouteRule {
    RouteFamily family = RouteFamily::RightAngle;
    bool hasSides = false;  ///< Lines should leave by `leave` and arrive by `arrive`.
    Side leave = Side::Bottom, arrive = Side::Top;
    bool levelFirst = false,
         uprightFirst = false;  ///< Simple HV: leave level, arrive upright; simple VH: the reverse.
};

/// What a page's `RouteStyle` asks for; unknown numbers are right angle, as 0 is.
RouteRule RuleOf(int routeStyle);

}  // namespace norvelis::layout
