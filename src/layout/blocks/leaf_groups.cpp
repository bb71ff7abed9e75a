#include "layout/blocks/leaf_groups.h"

#include <cstddef>
#include <map>
#include <utility>

namespace norvelis::layout {

std::vector<LeafGroup> LeafGroupsOf(const Graph& graph, std::size_t least, bool byDirection) {
    std::vector<int> ends(graph.boxes.size());
    for (const Line& line : graph.lines) {
        ++ends[static_cast<std::size_t>(line.from)];
        ++ends[static_cast<std::size_t>(line.to)];
    }
    const auto isLeaf = [&](int box) { return ends[static_cast<std::size_t>(box)] == 1; };
    std::map<std::pair<int, bool>, LeafGroup> byHub;
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        if (isLeaf(line.from) == isLeaf(line.to)) continue;
        const bool above = isLeaf(line.from);
        const int hub = above ? line.to : line.from;
        LeafGroup& group = byHub[{hub, above && byDirection}];
        group.hub = hub;
        group.above = above && byDirection;
        group.leaves.push_back(above ? line.from : line.to);
        group.lines.push_back(static_cast<int>(k));
    }
    std::vector<LeafGroup> groups;
    for (auto& [hub, group] : byHub)
        if (group.leaves.size() >= least) groups.push_back(std::move(group));
    return groups;
}

}  // namespace norvelis::layout
