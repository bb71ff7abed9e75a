#pragma once

#include <QImage>

#include "drawing/model/shape.h"

namespace norvelis::drawing::render {

/// The picture of a shape; one that is larger than anybody can see is shrunk. Null when it is no bitmap (PNG,
/// JPEG, GIF, BMP), is damaged, or when with it all pictures together, whose pixels are counted in `pixels`,
/// would be more than memory should hold.
QImage ReadBitmap(const ForeignPicture& picture, std::size_t& pixels);

}  // namespace norvelis::drawing::render
