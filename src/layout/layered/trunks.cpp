#include "layout/layered/trunks.h"

#include <cstddef>
#include <set>

#include "layout/graph/route_rule.h"

namespace norvelis::layout {

std::vector<bool> BoxesWithTrunk(const Graph& graph, const Style& style, const Grid& grid) {
    constexpr double kClosest = 0.07, kCorner = 0.08;  // inches between lines that an eye tells apart
    if (RuleOf(style.routeStyle).family == RouteFamily::Tree)
        return std::vector<bool>(graph.boxes.size(), true);
    std::vector<std::set<int>> members(graph.boxes.size());
    for (std::size_t k = 0; k < graph.lines.size(); ++k)
        if (!grid.paths[k].empty() && grid.paths[k].front() == graph.lines[k].from)
            members[static_cast<std::size_t>(graph.lines[k].from)].insert(graph.lines[k].to);
    std::vector<bool> trunks;
    for (std::size_t i = 0; i < members.size(); ++i)
        trunks.push_back(static_cast<double>(members[i].size()) * kClosest >
                         graph.boxes[i].width - 2 * kCorner + kClosest);
    return trunks;
}

}  // namespace norvelis::layout
