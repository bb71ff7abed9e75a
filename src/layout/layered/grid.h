#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/style.h"
#include "layout/layered/layers.h"

namespace norvelis::layout {

/// A place in a row: a box, a label, or a line passing. Its line runs through `x`.
struct Place {
    int row = 0;
    int box = -1;                  ///< -1 when a line passes.
    int line = -1;                 ///< -1 for a box.
    int section = -1;              ///< Lines keep their order where they keep their sections (layers.h).
    bool label = false;            ///< The line's label is here.
    double before = 0, after = 0;  ///< How far it reaches left and right of x.
    double height = 0;             ///< Space from top to bottom.
    double x = 0;
};

/// The layers with space for every single line and label, and rows between them for the labels of short
/// lines.
struct Grid {
    std::vector<Place> places;            ///< The first ones are the graph's boxes.
    std::vector<std::vector<int>> rows;   ///< Places from left to right.
    std::vector<bool> isLayer;            ///< For each row, whether boxes are there.
    std::vector<std::vector<int>> paths;  ///< For each line, its places from its upper to its lower box.
};

/// How near two places of one row may come.
double LeastDistance(const Place& left, const Place& right, const Style& style);

Grid MakeGrid(const Graph& graph, const Layers& layers, const Style& style);

}  // namespace norvelis::layout
