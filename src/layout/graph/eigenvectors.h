#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// A point for each vertex of a connected graph, given by its neighbours, so that neighbours are near to each
/// other on the whole and the graph spreads over the plane: the two smoothest eigenvectors of the
/// degree-normalized Laplacian. Koren: Drawing graphs by eigenvectors (2005).
std::vector<Point> SpectralPlaces(const std::vector<std::vector<int>>& neighbours);

}  // namespace norvelis::layout
