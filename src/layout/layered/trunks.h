#pragma once

#include <vector>

#include "layout/graph/graph.h"
#include "layout/graph/style.h"
#include "layout/layered/grid.h"

namespace norvelis::layout {

/// For each box, whether its lines to members leave it by one point and part below it: in organisation charts
/// and trees always, otherwise where there are more members than its side has space for lines.
std::vector<bool> BoxesWithTrunk(const Graph& graph, const Style& style, const Grid& grid);

}  // namespace norvelis::layout
