#pragma once

#include "layout/graph/style.h"

namespace norvelis::layout {

/// The route styles by what they do.
enum class RouteFamily {
    RightAngle,  ///< Horizontal and vertical segments, whichever is shorter.
    Straight,    ///< Straight, Network, CenterToCenter: one segment where boxes let it pass.
    Tree,        ///< OrgChart and Tree: right angles, lines of one owner share a trunk.
    Flowchart,   ///< Right angles, with the flow from side to opposite side.
    Simple       ///< Right angles with one or two bends.
};

enum class Side { Left, Right, Bottom, Top };

struct RouteRule {
    RouteFamily family = RouteFamily::RightAngle;
    bool hasSides = false;  ///< Lines should leave by `leave` and arrive by `arrive`.
    Side leave = Side::Bottom, arrive = Side::Top;
    bool horizontalFirst = false,
         verticalFirst = false;  ///< SimpleHV: leave horizontal, arrive vertical; SimpleVH: the reverse.
};

/// What a style asks for; numbers without a name are right angle, as the default is.
RouteRule RuleOf(RouteStyle style);

}  // namespace norvelis::layout
