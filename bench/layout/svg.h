#pragma once

#include <filesystem>
#include <string>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// A picture of the placement in its own size: numbered boxes, lines, and labels as the boxes that they fill.
std::string SvgPicture(const Graph& graph, const Placement& placement);

/// Writes that picture.
void WriteSvg(const std::filesystem::path& path, const Graph& graph, const Placement& placement);

}  // namespace norvelis::layout
