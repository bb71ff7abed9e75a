#pragma once

#include <vector>

#include "drawing/layout/graph.h"

// How much room rings leave between boxes, so that their lines and labels find a way.
namespace norvelis::layout {

struct Gaps {
    double x = 0, y = 0;
};

/// The gaps of the style, by its depth, with room for the labels.
Gaps LeastGaps(const Graph& graph, const Style& style);

/// What the lines need when boxes stand like this: the lines that pass a box on average, on tracks of their
/// own.
Gaps GapsForLines(const Graph& graph, const std::vector<Point>& centers, const Style& style);

}  // namespace norvelis::layout
