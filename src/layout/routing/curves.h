#pragma once

#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// Prepares ways for being drawn with rounded corners. A corner is drawn as a curve between the middles of
/// its two pieces: extra points on long pieces keep the curve short, and off all boxes and the labels of
/// other lines. `labels`: one for each way.
void FitCurves(std::vector<std::vector<Point>>& ways, const std::vector<Rect>& boxes,
               const std::vector<Rect>& labels, double radius);

}  // namespace norvelis::layout
