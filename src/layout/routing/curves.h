#pragma once

#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// Prepares paths for being drawn with rounded corners. A corner is drawn as a curve between the middles of
/// its two segments: extra points on long segments keep the curve short, and off all boxes and labels, so
/// that no line leaves its own one. `labels`: one for each path.
void FitCurves(std::vector<std::vector<Point>>& paths, const std::vector<Rect>& boxes,
               const std::vector<Rect>& labels, double radius);

}  // namespace norvelis::layout
