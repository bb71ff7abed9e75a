#include "layout/graph/biconnected.h"

#include <algorithm>
#include <cstddef>

namespace norvelis::layout {

std::vector<std::vector<int>> BiconnectedComponents(const std::vector<std::vector<int>>& neighbours) {
    const auto at = [](int i) { return static_cast<std::size_t>(i); };
    struct Visit {
        int vertex, parent;
        std::size_t next;
    };
    std::vector<std::vector<int>> components;
    std::vector<int> found(neighbours.size(), -1), low(neighbours.size());
    std::vector<int> open;      // vertices whose component is not closed yet
    std::vector<Visit> visits;  // the depth-first walk, without recursion: chains of sets are long
    int time = 0;
    for (std::size_t root = 0; root < neighbours.size(); ++root) {
        if (found[root] >= 0) continue;
        found[root] = low[root] = time++;
        visits.push_back({static_cast<int>(root), -1, 0});
        while (!visits.empty()) {
            Visit& visit = visits.back();
            const int vertex = visit.vertex;
            if (visit.next < neighbours[at(vertex)].size()) {
                const int other = neighbours[at(vertex)][visit.next++];
                if (found[at(other)] < 0) {
                    found[at(other)] = low[at(other)] = time++;
                    open.push_back(other);
                    visits.push_back({other, vertex, 0});
                } else if (other != visit.parent) {
                    low[at(vertex)] = std::min(low[at(vertex)], found[at(other)]);
                }
                continue;
            }
            const int parent = visit.parent;
            visits.pop_back();
            if (parent < 0) continue;
            low[at(parent)] = std::min(low[at(parent)], low[at(vertex)]);
            if (low[at(vertex)] < found[at(parent)]) continue;
            const auto first = std::find(open.begin(), open.end(), vertex);
            std::vector<int> component{parent};
            component.insert(component.end(), first, open.end());
            open.erase(first, open.end());
            components.push_back(std::move(component));
        }
    }
    return components;
}

}  // namespace norvelis::layout
