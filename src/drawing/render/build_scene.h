#pragma once

#include "drawing/model/document.h"
#include "drawing/render/scene.h"

namespace norvelis::drawing::render {

/// The page as it is to be shown, its background page behind it. Cells are taken as they stand: a document that was
/// changed is to be recalculated first.
Scene BuildScene(const Document& document, const Page& page);

/// A master by itself, on its own page.
Scene BuildScene(const Document& document, const Master& master);

}  // namespace norvelis::drawing::render
