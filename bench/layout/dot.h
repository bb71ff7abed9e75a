#pragma once

#include <optional>

#include "layout/graph/graph.h"

namespace norvelis::layout {

struct DotDrawing {
    Placement placement;  ///< Splines as straight segments.
    double seconds = 0;
};

/// The graph drawn by Graphviz dot with the same sizes of boxes and labels and dot's own distances; nothing
/// when dot is not installed.
std::optional<DotDrawing> DrawWithDot(const Graph& graph, bool leftToRight);

}  // namespace norvelis::layout
