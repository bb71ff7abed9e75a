#pragma once

#include <cstddef>
#include <vector>

#include "base/geometry.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Places labels: each on its own line where that is free of boxes and other labels and fewest foreign lines
/// pass, lines with the least choice first; beside it when the line itself has no such place, and then as
/// near as there is space. Labels never cover boxes or one another. After Kakoulis, Tollis: On the edge label
/// placement problem (1996).
///
/// `which`: the lines whose labels are to be placed; those of others stay at their `middles`.
void PlaceLabels(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                 const std::vector<std::vector<Point>>& paths, const std::vector<std::size_t>& which,
                 std::vector<Point>& middles);

/// Gives labels that another line runs through, or that are away from their own line, other spots, and moves
/// the labels that have those out of the way. Returns the lines whose labels stay as they are, since there is
/// no such spot.
std::vector<std::size_t> ClearLabels(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                                     const std::vector<std::vector<Point>>& paths,
                                     std::vector<Point>& middles);

}  // namespace norvelis::layout
