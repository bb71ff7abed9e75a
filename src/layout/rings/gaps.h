#pragma once

#include <vector>

#include "layout/graph/graph.h"

// How much room rings leave between boxes, so that their lines and labels find a way.
namespace norvelis::layout {

struct Gaps {
    double x = 0, y = 0;
};

/// The gaps of the style, by its depth, with room for the labels.
Gaps LeastGaps(const Graph& graph, const Style& style);

}  // namespace norvelis::layout
