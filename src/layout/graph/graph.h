#pragma once

#include <vector>

#include "base/geometry.h"

// What placement and routing work on: boxes with their sizes, lines with the sizes of their labels; what they
// give back: where each box is and how each line runs. Pure geometry, no
// documents. Inches; x grows to the right, y grows upwards (as on a page). Equal input gives equal output.
namespace norvelis::layout {

/// Where the note of a box stands.
enum class NoteSide { Right, Left, Above, Below };

/// A box may have a note, which stands beside it wherever it is: a note of size 0 by 0 is no note. What side
/// is best is up to the placement.
struct Box {
    double width = 0, height = 0;
    double noteWidth = 0, noteHeight = 0;
    NoteSide noteSide = NoteSide::Right;

    bool HasNote() const { return noteWidth > 0; }
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

/// One line's path: from the border of its owner's box to the border of its member's. A curved route is drawn
/// with its corners rounded (each corner a quadratic curve between the middles of its two segments, end
/// segments kept straight to their middle), so that it stays in the corners' triangles.
struct Route {
    std::vector<Point> points;
    bool curved = false;
    Point label;  ///< Middle of the label.
};

struct Placement {
    std::vector<Point> centers;  ///< One for each box.
    std::vector<Route> routes;   ///< One for each line.
    /// One for each box; what a box without a note has means nothing.
    std::vector<NoteSide> noteSides{};
};

}  // namespace norvelis::layout
