#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drawing/render/scene.h"

namespace norvelis::drawing::render {

/// The pages of a drawing that others wrote (binary .vsd, .vdx, packages that our reader refuses) or the
/// masters of such a stencil, for showing only. Nothing when libvisio can not read the bytes either.
std::optional<std::vector<Scene>> ForeignPages(const std::string& bytes);
std::optional<std::vector<Scene>> ForeignMasters(const std::string& bytes);

}  // namespace norvelis::drawing::render
