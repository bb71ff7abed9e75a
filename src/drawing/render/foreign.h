#pragma once

#include <optional>
#include <string>
#include <vector>

namespace norvelis::drawing::render {

/// The pages of a drawing that others wrote (binary .vsd, .vdx, packages that our reader refuses) or the masters of
/// such a stencil, one SVG text each, for showing only. Nothing when the file is none that can be read.
std::optional<std::vector<std::string>> ForeignPages(const std::string& bytes);
std::optional<std::vector<std::string>> ForeignMasters(const std::string& bytes);

}  // namespace norvelis::drawing::render
