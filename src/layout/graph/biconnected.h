#pragma once

#include <vector>

namespace norvelis::layout {

/// The biconnected components of an undirected graph given by its neighbours (parallel edges count once),
/// each as its vertices; a bridge is a component of two. A cut vertex is in several, a lone vertex in none.
/// Components come so that each one shares at most one vertex with those before it in the walk from vertex 0.
/// Hopcroft, Tarjan: Efficient algorithms for graph manipulation (1973).
std::vector<std::vector<int>> BiconnectedComponents(const std::vector<std::vector<int>>& neighbours);

}  // namespace norvelis::layout
