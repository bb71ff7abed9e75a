#include "layout/routing/route_style.h"

namespace norvelis::layout {

RouteRule RuleOf(int routeStyle) {
    using enum Side;
    using enum RouteFamily;
    switch (routeStyle) {
        case 2:
        case 9:
        case 16:
            return {.family = Straight};
        case 3:
        case 7:
            return {Tree, true, Bottom, Top};
        case 4:
        case 8:
            return {Tree, true, Right, Left};
        case 10:
        case 14:
            return {Tree, true, Top, Bottom};
        case 11:
        case 15:
            return {Tree, true, Left, Right};
        case 5:
            return {Flowchart, true, Bottom, Top};
        case 6:
            return {Flowchart, true, Right, Left};
        case 12:
            return {Flowchart, true, Top, Bottom};
        case 13:
            return {Flowchart, true, Left, Right};
        case 17:
            return {Simple, true, Bottom, Top};
        case 18:
            return {Simple, true, Right, Left};
        case 19:
            return {Simple, true, Top, Bottom};
        case 20:
            return {Simple, true, Left, Right};
        case 21:
            return {.family = Simple, .levelFirst = true};
        case 22:
            return {.family = Simple, .uprightFirst = true};
        default:
            return {};
    }
}

}  // namespace norvelis::layout
