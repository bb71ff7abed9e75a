#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "layout/layered/block_order.h"

namespace norvelis::layout {

/// The blocks as a breadth-first walk from one of them meets them.
std::vector<int> BreadthFirstOrder(const BlockOrder& blocks, int first);

/// The blocks as a depth-first walk meets them: trees come out without crossings.
std::vector<int> DepthFirstOrder(const BlockOrder& blocks, int first);

/// The blocks by their values in the slowest mode of the graph's random walk, found by so many steps from
/// random values: blocks that hang together stay together. Few steps show near neighbourhoods, many the
/// whole. Koren: Drawing graphs by eigenvectors (2005).
std::vector<int> SpectralOrder(const BlockOrder& blocks, int steps, std::mt19937& random);

}  // namespace norvelis::layout
