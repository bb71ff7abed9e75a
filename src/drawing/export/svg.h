#pragma once

#include <string>

#include "drawing/render/scene.h"
#include "engine/shape_links.h"

namespace norvelis::drawing::render {

/// The scene as one SVG file, 1 user unit to the point. Every shape is a group with its comment as a tip and
/// its hyperlink around it, or the link that is given for it; text stays text. Equal scenes give equal files.
std::string SvgText(const Scene& scene, const engine::ShapeLinks& links = {});

}  // namespace norvelis::drawing::render
