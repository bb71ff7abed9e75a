#include "drawing/layout/gaps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace norvelis::layout {

namespace {

/// Deep stands tighter than medium, shallow wider.
double DepthFactor(int placeDepth) {
    return placeDepth == 2 ? 0.9 : placeDepth == 3 ? 1.1 : 1.0;
}

}  // namespace

Gaps LeastGaps(const Graph& graph, const Style& style) {
    const double factor = DepthFactor(style.placeDepth);
    double labelWidth = 0, labelHeight = 0;
    for (const Line& line : graph.lines) {
        labelWidth = std::max(labelWidth, line.labelWidth);
        labelHeight = std::max(labelHeight, line.labelHeight);
    }
    return {std::max(style.boxGapX * factor, graph.lines.empty() ? 0 : labelWidth * factor + style.lineGap),
            std::max(style.boxGapY * factor, graph.lines.empty() ? 0 : labelHeight + 4 * style.lineGap)};
}

Gaps GapsForLines(const Graph& graph, const std::vector<Point>& centers, const Style& style) {
    const Gaps least = LeastGaps(graph, style);
    if (graph.boxes.empty() || graph.lines.empty()) return least;
    double width = 0, height = 0, level = 0, upright = 0;
    for (const Box& box : graph.boxes) {
        width += box.width;
        height += box.height;
    }
    const double n = static_cast<double>(graph.boxes.size());
    for (const Line& line : graph.lines) {
        const Point &a = centers[static_cast<std::size_t>(line.from)],
                    &b = centers[static_cast<std::size_t>(line.to)];
        level += std::abs(a.x - b.x) / (width / n + least.x);
        upright += std::abs(a.y - b.y) / (height / n + least.y);
    }
    constexpr double filled = 0.6;  // share of the tracks that can be used in practice
    const double factor = DepthFactor(style.placeDepth) * style.lineGap / filled / n;
    return {std::max(least.x, 2 * style.lineGap + upright * factor),
            std::max(least.y, 2 * style.lineGap + level * factor)};
}

}  // namespace norvelis::layout
