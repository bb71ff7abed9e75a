#pragma once

#include <utility>
#include <vector>

namespace norvelis::layout {

/// An order of the vertices 0 to count-1 of a connected graph on a circle with few crossings of the edges
/// drawn as chords. Two starts, vertices added one by one to the end where they close more than they open and
/// the angles of a spectral drawing; from each, vertices change places while that shortens chords, then each
/// is sifted to its best place; the better one stays. Baur, Brandes: Crossing reduction in circular layouts
/// (2004).
std::vector<int> CircleOrder(int count, const std::vector<std::pair<int, int>>& edges);

/// Crossings of the edges as chords of the circle.
long CrossingsOnCircle(const std::vector<int>& order, const std::vector<std::pair<int, int>>& edges);

}  // namespace norvelis::layout
