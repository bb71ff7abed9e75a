#pragma once

#include "drawing/render/scene.h"
#include "drawing/walk/page_walk.h"

namespace norvelis::drawing::render {

/// The page's shapes with their outlines as straight segments, in scene units. A page that only libvisio can
/// read has none.
walk::PageWalk WalkOf(const Scene& scene);

}  // namespace norvelis::drawing::render
