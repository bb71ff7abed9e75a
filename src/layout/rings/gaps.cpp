#include "layout/rings/gaps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace norvelis::layout {

namespace {

/// Deep is tighter than medium, shallow wider.
double DepthFactor(PlaceDepth depth) {
    return depth == PlaceDepth::Deep ? 0.9 : depth == PlaceDepth::Shallow ? 1.1 : 1.0;
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

}  // namespace norvelis::layout
