#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

enum class Shape {
    Tree,    ///< One owner for each record.
    Dag,     ///< Records with several owners, all of them higher.
    Network  ///< Records with several owners, some sets leading back up.
};

/// A graph shaped like a schema's diagram: boxes as record boxes come out, every line with a label of two
/// short lines.
struct SchemaShape {
    Shape shape = Shape::Dag;
    int records = 60;
    double setsPerRecord = 1.4;  ///< Trees have fewer than one.
    int hubs = 0;                ///< Records that own 40 members each.
    int parts = 1;               ///< Connected components at least.
    std::uint32_t seed = 1;
};

Graph SchemaGraph(const SchemaShape& shape);

/// The graphs that the layouts are judged by.
struct NamedGraph {
    std::string name;
    Graph graph;
};
std::vector<NamedGraph> BenchmarkGraphs();

/// What makes drawings unfit for a wall: flat schemas with hubs, stars, pairs with many sets, chains,
/// complete graphs and an undirected tree.
std::vector<NamedGraph> WallGraphs();

/// Gives two records of five a note of one to three lines.
void AddNotes(Graph& graph, std::uint32_t seed);

/// The graph with notes as boxes of their own, each with a line to its box, for programs that know no notes.
Graph WithNotesAsBoxes(const Graph& graph);

/// Schemas of many sizes and graphs of unusual shape, other ones for each seed: for looking for faults.
std::vector<NamedGraph> GraphsOfSeed(std::uint32_t seed);

}  // namespace norvelis::layout
