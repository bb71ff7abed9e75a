#pragma once

#include <utility>
#include <vector>

namespace norvelis::layout {

/// An order of the vertices 0 to count-1 on a circle with few crossings of the edges drawn as chords:
/// vertices are added one by one to the end where they close more than they open, then each is sifted to its
/// best place. Baur, Brandes: Crossing reduction in circular layouts (2004).
std::vector<int> CircleOrder(int count, const std::vector<std::pair<int, int>>& edges);

}  // namespace norvelis::layout
