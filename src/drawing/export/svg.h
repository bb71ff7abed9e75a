#pragma once

#include <string>

#include "drawing/render/scene.h"

namespace norvelis::drawing::render {

/// The scene as one SVG file, 1 user unit to the point. Every shape is a group with its comment as a tip and
/// its hyperlink around it; text stays text. Equal scenes give equal files.
std::string SvgText(const Scene& scene);

}  // namespace norvelis::drawing::render
