#include "layout/layered/loops.h"

#include <algorithm>

namespace norvelis::layout {

namespace {

double SpaceOf(const Line& loop, const Style& style) {
    return style.lineGap + std::max(style.lineGap, loop.labelWidth);
}

}  // namespace

std::vector<std::vector<int>> LoopsOf(const Graph& graph) {
    std::vector<std::vector<int>> loops(graph.boxes.size());
    for (std::size_t k = 0; k < graph.lines.size(); ++k)
        if (graph.lines[k].from == graph.lines[k].to)
            loops[graph.lines[k].from].push_back(static_cast<int>(k));
    return loops;
}

double LoopSpace(const Graph& graph, const std::vector<int>& loops, const Style& style) {
    double space = 0;
    for (const int loop : loops) space += SpaceOf(graph.lines[loop], style);
    return space;
}

void RouteLoops(const Graph& graph, const Style& style, Placement& placement) {
    const std::vector<std::vector<int>> loops = LoopsOf(graph);
    for (std::size_t box = 0; box < loops.size(); ++box) {
        if (loops[box].empty()) continue;
        const Point center = placement.centers[box];
        const double half = graph.boxes[box].height / 2, right = center.x + graph.boxes[box].width / 2;
        double label = 0;
        for (const int loop : loops[box]) label = std::max(label, graph.lines[loop].labelHeight);
        // Each runs outside the labels of those within, as far as the box is high enough.
        double x = right, reach = std::min(half / 2, label / 2);
        const double step = (half - reach) / static_cast<double>(loops[box].size() + 1);
        for (const int loop : loops[box]) {
            const double space = SpaceOf(graph.lines[loop], style);
            const double middle = x + (space + style.lineGap) / 2;
            x += space;
            reach += step;
            placement.routes[loop] = {{{right, center.y - reach},
                                       {middle, center.y - reach},
                                       {middle, center.y + reach},
                                       {right, center.y + reach}},
                                      false,
                                      {middle, center.y}};
        }
    }
}

}  // namespace norvelis::layout
