#pragma once

#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// The path without the points that lie on the straight line between their neighbours. A path of one place
/// keeps its ends.
std::vector<Point> CornersOf(const std::vector<Point>& path);

/// Adds points to a path of corners so that it can be drawn as curves between the middles of its segments
/// (Route::curved): each curve then reaches no farther from its corner than the radius.
std::vector<Point> RoundCorners(const std::vector<Point>& corners, double radius);

}  // namespace norvelis::layout
