#pragma once

#include <vector>

#include "base/geometry.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// How lines turn where they exchange pieces.
enum class Turns {
    RightAngled,  ///< One of the two a hair before the other, so that the two can be moved apart.
    Slanting      ///< Each on its side, as far from the other as boxes allow.
};

enum class Exchanged {
    None,  ///< There was nothing, or so much that nobody could follow a line.
    Some,  ///< What is left needs space to be made first.
    All
};

/// Lines that cross although they have an end in common exchange what is between the crossing and that end;
/// lines that cross twice exchange what is between the two crossings. So all lines of a box, and all that run
/// between the same two boxes, are in one order, and what is drawn is the same but for the crossings.
Exchanged ExchangePieces(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
                         const std::vector<Rect>& boxes, double lineGap, Turns turns);

}  // namespace norvelis::layout
