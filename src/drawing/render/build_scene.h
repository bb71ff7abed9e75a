#pragma once

#include "drawing/model/document.h"
#include "drawing/render/scene.h"
#include "drawing/text/fonts.h"

namespace norvelis::drawing::render {

/// The page as it is to be shown, its background page behind it. Cells are taken as they stand: a document
/// that was changed is to be recalculated first.
Scene BuildScene(FontLibrary& fonts, const Document& document, const Page& page);

/// A master by itself, on its own page.
Scene BuildScene(FontLibrary& fonts, const Document& document, const Master& master);

}  // namespace norvelis::drawing::render
