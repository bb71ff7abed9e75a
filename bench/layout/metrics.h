#pragma once

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// What a reader sees of a drawing, measured on the finished picture alone.
struct Quality {
    int boxOverlaps = 0;      ///< Pairs of boxes that share more than a border.
    int crossings = 0;        ///< Pairs of segments of two lines that cross inside both.
    int boxesCrossed = 0;     ///< Pairs of a line and a box that it runs through, be it one of its own.
    int labelCollisions = 0;  ///< Pairs of a label and a box or another label that share more than a border.
    int labelsCrossed = 0;    ///< Pairs of a label and another line that runs through it.
    int sharedSegments = 0;   ///< Pairs of lines that run on top of each other for a while.
    int labelsAstray = 0;     ///< Labels that do not touch their line.
    int bends = 0;
    double length = 0;  ///< Of all lines, in inches.
    double width = 0, height = 0;

    double Area() const { return width * height; }
};

/// Curved routes are measured as they are drawn, in short straight segments.
Quality Measure(const Graph& graph, const Placement& placement);

}  // namespace norvelis::layout
