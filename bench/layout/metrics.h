#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// What a reader sees of a drawing, measured on the finished picture alone.
struct Quality {
    int boxOverlaps = 0;      ///< Pairs of boxes that share more than a border.
    int crossings = 0;        ///< Points where two lines cross; a trunk counts as one.
    int boxesCrossed = 0;     ///< Pairs of a line and a box that it runs through, be it one of its own.
    int labelCollisions = 0;  ///< Pairs of a label and a box or another label that share more than a border.
    int labelsCrossed = 0;    ///< Pairs of a label and another line that runs through it.
    int sharedSegments = 0;   ///< Pairs of lines that run on top of each other for a while.
    int labelsAstray = 0;     ///< Labels that do not touch their line.
    int pairCrossings = 0;    ///< Of the crossings, those of lines that join the same two boxes.
    int sharedEndCrossings = 0;  ///< Of the crossings, those of lines that have one box in common.
    int crossedTwice = 0;        ///< Pairs of lines that cross more than once.
    int bends = 0;
    int crowdedSides = 0;     ///< Sides of boxes with ports closer than 0.09 in that had space for 0.18.
    int portSides = 0;        ///< Sides of boxes with two ports or more; a trunk's lines have one port.
    double closestPorts = 0;  ///< Least distance of two ports on one side, in inches; 0 where there are none.
    double labelDistance = 0;  ///< The farthest that a label is from its line, in inches.
    double length = 0;         ///< Of all lines, in inches.
    double width = 0, height = 0;

    double Area() const { return width * height; }
    double Ratio() const { return height > 0 ? width / height : 0; }
    /// What is left of a label of 6 points when the drawing is fitted to a sheet of A0, in points.
    double LabelOnA0() const;
};

/// A route as it is drawn: curves as short straight segments.
std::vector<Point> Drawn(const Route& route);

/// Curved routes are measured as they are drawn, in short straight segments.
Quality Measure(const Graph& graph, const Placement& placement);

}  // namespace norvelis::layout
