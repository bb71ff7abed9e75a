#pragma once

#include <optional>
#include <string>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// The graph drawn by ELK's layered algorithm with lines at right angles; none when the folder has no package
/// elkjs (`npm install elkjs` in it puts it there) or node is not installed.
std::optional<Placement> DrawWithElk(const Graph& graph, const std::string& packageFolder);

}  // namespace norvelis::layout
