#pragma once

#include <vector>

#include "drawing/routing/geometry.h"

namespace norvelis::layout {

/// The middles of the labels: each on its own line where that is free of boxes and other labels and fewest
/// foreign lines pass, lines with the least choice first; beside it when the line itself has no such place,
/// and then as near as there is room. Labels never cover boxes or one another. After Kakoulis, Tollis: On the
/// edge label placement problem (1996).
struct Labels {
    std::vector<Point> middles;
    int astray = 0;  ///< Labels that found no room on or right beside their line.
};

Labels PlaceLabels(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                   const std::vector<std::vector<Point>>& ways);

}  // namespace norvelis::layout
