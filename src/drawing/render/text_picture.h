#pragma once

#include "drawing/model/document.h"
#include "drawing/render/scene.h"
#include "drawing/text/fonts.h"

namespace norvelis::drawing::render {

/// A shape's text broken into lines inside its text block of `width` by `height` (inches), origin at the
/// block's upper left corner. `place` is left to the caller; `bounds` are those of the lines, margins
/// included; `ink` has those at the sides alone.
TextPicture PictureOfText(FontLibrary& fonts, const Document& document, const Shape& shape, double width,
                          double height);

}  // namespace norvelis::drawing::render
