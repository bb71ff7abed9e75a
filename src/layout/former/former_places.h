#pragma once

#include <optional>
#include <vector>

#include "layout/graph/components.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Where boxes and lines of a graph are in the drawing that this one replaces, so that readers find them
/// again. Without boxes: nothing is known, or nothing is to be kept.
struct FormerPlaces {
    std::vector<std::optional<Point>> centers;  ///< One for each box; none for a new one.
    std::vector<std::vector<Point>>
        routes;  ///< One for each line, from owner to member; empty for a new one.

    /// Whether so many boxes are known that a reader would look for them where they were: two thirds.
    bool AreMost() const;
};

/// What is known of the boxes and lines of a component.
FormerPlaces PartOf(const FormerPlaces& former, const Component& component);

/// The row of each box, rows numbered by growing y: the middles of the boxes of a row are side by side, no
/// farther apart than half the height of the least of them.
std::vector<int> RowsOf(const std::vector<Rect>& boxes);

/// Whether the known boxes are in rows as layers are drawn: middles in line, no row beside another.
bool AreInRows(const Graph& graph, const FormerPlaces& former);

}  // namespace norvelis::layout
