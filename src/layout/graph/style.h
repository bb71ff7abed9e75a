#pragma once

// The cells of a page that say how it is laid out, with their published numbers. A page may hold any number:
// one without a name counts as the first of its enum.
namespace norvelis::layout {

/// visPLOPlace...: where boxes go. Only the named four are drawn in their own style, all others top to
/// bottom.
enum class PlaceStyle : int { Default = 0, TopToBottom = 1, LeftToRight = 2, Radial = 3, Circular = 6 };

/// visPLOPlaceDepth...: how tightly rings are drawn.
enum class PlaceDepth : int { Default = 0, Medium = 1, Deep = 2, Shallow = 3 };

/// visLORoute...: how lines run. The letters are compass directions, from the owner to the member; H is
/// horizontal, V vertical, in the order from the owner.
enum class RouteStyle : int {
    Default = 0,
    RightAngle = 1,
    Straight = 2,
    OrgChartNS = 3,
    OrgChartWE = 4,
    FlowchartNS = 5,
    FlowchartWE = 6,
    TreeNS = 7,
    TreeWE = 8,
    Network = 9,
    OrgChartSN = 10,
    OrgChartEW = 11,
    FlowchartSN = 12,
    FlowchartEW = 13,
    TreeSN = 14,
    TreeEW = 15,
    CenterToCenter = 16,
    SimpleNS = 17,
    SimpleWE = 18,
    SimpleSN = 19,
    SimpleEW = 20,
    SimpleHV = 21,
    SimpleVH = 22
};

/// visLORouteExt...: whether the corners of lines are rounded. Default is straight.
enum class LineRouteExt : int { Default = 0, Straight = 1, Nurbs = 2 };

/// Sheets of paper of the A series are so many times as long as wide; a page lies on its long side.
inline constexpr double kPaperRatio = 1.414;

struct Style {
    PlaceStyle placeStyle = PlaceStyle::TopToBottom;
    RouteStyle routeStyle = RouteStyle::Default;
    PlaceDepth placeDepth = PlaceDepth::Default;
    LineRouteExt lineRouteExt = LineRouteExt::Default;
    double boxGapX = 0.5, boxGapY = 0.5;  ///< Least distance between boxes, in inches.
    /// Least distance between parallel lines, but in crowded channels, and of a line from a box, in inches.
    double lineGap = 0.125;

    bool operator==(const Style&) const = default;
    bool IsCurved() const { return lineRouteExt == LineRouteExt::Nurbs; }
};

/// The style that the cells of a page ask for.
inline Style StyleOfCells(int placeStyle, int placeDepth, int routeStyle, int lineRouteExt) {
    return {.placeStyle = static_cast<PlaceStyle>(placeStyle),
            .routeStyle = static_cast<RouteStyle>(routeStyle),
            .placeDepth = static_cast<PlaceDepth>(placeDepth),
            .lineRouteExt = static_cast<LineRouteExt>(lineRouteExt)};
}

}  // namespace norvelis::layout
