#pragma once

#include <vector>

#include "base/geometry.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Leads slanting lines around the labels of others that they run through, where boxes and other labels leave
/// the space, the line keeps its own label, and it crosses no other line that it did not cross before.
void LeadAroundLabels(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
                      const std::vector<Rect>& boxes, const std::vector<Point>& labels);

}  // namespace norvelis::layout
