#pragma once

#include "drawing/model/document.h"
#include "drawing/render/scene.h"
#include "drawing/text/fonts.h"

namespace norvelis::drawing::render {

/// What scenes have cost so far. A small file can ask for more than any memory holds, since every instance of
/// a master repeats all of it; the scenes of one file share a SceneCost, which has an end.
struct SceneCost {
    std::size_t work = 0;    ///< Corners of outlines, rows, bytes of text.
    std::size_t pixels = 0;  ///< Of pictures.
};

/// The page as it is to be shown, its background page behind it. Cells are taken as they are: a document
/// that was changed is to be recalculated first. RuntimeFailure 57 when the page asks for more than can be
/// shown.
Scene BuildScene(FontLibrary& fonts, const Document& document, const Page& page, SceneCost& cost);
Scene BuildScene(FontLibrary& fonts, const Document& document, const Page& page);

/// A master by itself, on its own page.
Scene BuildScene(FontLibrary& fonts, const Document& document, const Master& master, SceneCost& cost);

}  // namespace norvelis::drawing::render
