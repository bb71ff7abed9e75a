#pragma once

#include <vector>

#include "layout/former/former_places.h"

// What a graph has in common with the one that was drawn before it.
namespace norvelis::layout {

/// For each box and line its number in the graph of before, -1 for a new one.
struct Matches {
    std::vector<int> boxes, lines;
};

/// `named`: for each box the one of the same name, or -1. A box that got another name is known by its lines:
/// they lead to the same boxes. Lines are matched by their boxes, of several in their order.
Matches MatchGraphs(const Graph& graph, const Graph& former, std::vector<int> named);

/// The places of what is matched; none when more than three boxes and a tenth of all came or went: the order
/// of before would then cost more than it helps.
FormerPlaces PlacesOf(const Matches& matches, const Placement& former);

/// Whether the drawing of before can stand as it is: it shows all boxes in their size, all lines from box to
/// box, and nothing else, no box, line or label is over a box, no label over a label, and each label is at
/// its line. A person may have moved its boxes.
bool CanStay(const Graph& graph, const Matches& matches, const Graph& formerGraph, const Placement& former);

}  // namespace norvelis::layout
