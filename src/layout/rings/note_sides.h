#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Puts the notes of boxes on rings to the sides where they are in the way of the fewest lines and boxes, and
/// moves boxes apart until notes have their room, too.
void MakeRoomForNotes(Graph& graph, double gapX, double gapY, std::vector<Point>& centers);

}  // namespace norvelis::layout
