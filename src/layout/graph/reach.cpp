#include "layout/graph/reach.h"

#include <algorithm>
#include <cstddef>

namespace norvelis::layout {

namespace {
std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}
}  // namespace

Neighbours NeighboursOf(const Graph& graph) {
    Neighbours neighbours(graph.boxes.size());
    for (const Line& line : graph.lines) {
        if (line.from == line.to) continue;
        neighbours[At(line.from)].push_back(line.to);
        neighbours[At(line.to)].push_back(line.from);
    }
    return neighbours;
}

int MostReach(const Neighbours& neighbours) {
    constexpr double kRounding = 1e-6;
    std::vector<int> distance(neighbours.size()), walk;
    int best = 0;
    double bestReach = -1;
    for (std::size_t i = 0; i < neighbours.size(); ++i) {
        std::fill(distance.begin(), distance.end(), -1);
        walk.assign(1, static_cast<int>(i));
        distance[i] = 0;
        double reach = 0;
        int next = 0;
        for (std::size_t k = 0; k < walk.size(); ++k) {
            if (distance[At(walk[k])] == next) {
                // What is not found yet is at that distance at least: many boxes cannot win any more.
                ++next;
                const auto left = static_cast<double>(neighbours.size() - walk.size());
                if (reach + left / next < bestReach - kRounding) break;
            }
            for (const int other : neighbours[At(walk[k])]) {
                if (distance[At(other)] >= 0) continue;
                distance[At(other)] = distance[At(walk[k])] + 1;
                reach += 1.0 / distance[At(other)];
                walk.push_back(other);
            }
        }
        if (reach <= bestReach) continue;
        best = static_cast<int>(i);
        bestReach = reach;
    }
    return best;
}

}  // namespace norvelis::layout
