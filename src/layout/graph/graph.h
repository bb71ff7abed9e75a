#pragma once

#include <vector>

#include "base/geometry.h"

// What placement and routing work on: boxes with their sizes, lines with the sizes of their labels, and the
// page's layout cells; what they give back: where each box stands and how each line runs. Pure geometry, no
// documents. Inches; x grows to the right, y grows upwards (as on a page). Equal input gives equal output.
namespace norvelis::layout {

struct Box {
    double width = 0, height = 0;
};

/// From the owner's box to the member's. A label of size 0 by 0 is no label.
struct Line {
    int from = 0, to = 0;
    double labelWidth = 0, labelHeight = 0;
};

struct Graph {
    std::vector<Box> boxes;
    std::vector<Line> lines;
};

/// The page's layout cells, with their published numbers.
struct Style {
    int placeStyle = 1;    ///< 1 top to bottom, 2 left to right, 3 radial, 6 circular; others as 1.
    int routeStyle = 0;    ///< 0 to 22.
    int placeDepth = 0;    ///< 0 default, 1 medium, 2 deep, 3 shallow: how tightly rings stand.
    int lineRouteExt = 0;  ///< 0 default (straight), 1 straight pieces, 2 curved.
    double boxGapX = 0.5, boxGapY = 0.5;  ///< Least distance between boxes.
    /// Least distance between parallel lines, but in crowded channels, and of a line from a box.
    double lineGap = 0.125;
};

/// One line's way: from the border of its owner's box to the border of its member's. A curved route is drawn
/// with its corners rounded (each corner a quadratic curve between the middles of its two pieces, end pieces
/// kept straight to their middle), so that it stays in the corners' triangles.
struct Route {
    std::vector<Point> points;
    bool curved = false;
    Point label;  ///< Middle of the label.
};

struct Placement {
    std::vector<Point> centers;  ///< One for each box.
    std::vector<Route> routes;   ///< One for each line.
};

}  // namespace norvelis::layout
