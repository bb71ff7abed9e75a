#include "layout/graph/route_rule.h"

namespace norvelis::layout {

RouteRule RuleOf(RouteStyle style) {
    using enum Side;
    using enum RouteFamily;
    switch (style) {
        case RouteStyle::Straight:
        case RouteStyle::Network:
        case RouteStyle::CenterToCenter:
            return {.family = Straight};
        case RouteStyle::OrgChartNS:
        case RouteStyle::TreeNS:
            return {Tree, true, Bottom, Top};
        case RouteStyle::OrgChartWE:
        case RouteStyle::TreeWE:
            return {Tree, true, Right, Left};
        case RouteStyle::OrgChartSN:
        case RouteStyle::TreeSN:
            return {Tree, true, Top, Bottom};
        case RouteStyle::OrgChartEW:
        case RouteStyle::TreeEW:
            return {Tree, true, Left, Right};
        case RouteStyle::FlowchartNS:
            return {Flowchart, true, Bottom, Top};
        case RouteStyle::FlowchartWE:
            return {Flowchart, true, Right, Left};
        case RouteStyle::FlowchartSN:
            return {Flowchart, true, Top, Bottom};
        case RouteStyle::FlowchartEW:
            return {Flowchart, true, Left, Right};
        case RouteStyle::SimpleNS:
            return {Simple, true, Bottom, Top};
        case RouteStyle::SimpleWE:
            return {Simple, true, Right, Left};
        case RouteStyle::SimpleSN:
            return {Simple, true, Top, Bottom};
        case RouteStyle::SimpleEW:
            return {Simple, true, Left, Right};
        case RouteStyle::SimpleHV:
            return {.family = Simple, .horizontalFirst = true};
        case RouteStyle::SimpleVH:
            return {.family = Simple, .verticalFirst = true};
        case RouteStyle::Default:
        case RouteStyle::RightAngle:
            break;
    }
    return {};
}

}  // namespace norvelis::layout
