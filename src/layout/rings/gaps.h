#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/style.h"

// How much space rings leave between boxes, so that their lines and labels find their path.
namespace norvelis::layout {

struct Gaps {
    double x = 0, y = 0;
};

/// The gaps of the style, by its depth, with space for the labels.
Gaps LeastGaps(const Graph& graph, const Style& style);

}  // namespace norvelis::layout
