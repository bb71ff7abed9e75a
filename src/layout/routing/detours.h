#pragma once

#include <vector>

#include "base/geometry.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Leads slanting lines around the labels of others that they run through, where boxes and other labels leave
/// the space and the line keeps its own label.
void LeadAroundLabels(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
                      const std::vector<Rect>& boxes, const std::vector<Point>& labels);

}  // namespace norvelis::layout
