#pragma once

#include <filesystem>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Writes a picture of the placement: numbered boxes, lines, and labels as the boxes that they fill.
void WriteSvg(const std::filesystem::path& path, const Graph& graph, const Placement& placement);

}  // namespace norvelis::layout
