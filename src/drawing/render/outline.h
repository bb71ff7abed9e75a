#pragma once

#include <QPainterPath>
#include <vector>

#include "drawing/render/outline_row.h"

// Geometry rows as outlines. Local coordinates of the shape: inches, y upwards.
namespace norvelis::drawing::render {

/// `width` and `height` are the shape's, which the Rel... rows count in.
QPainterPath Outline(const std::vector<OutlineRow>& rows, double width, double height);

/// The outline with its corners rounded by `radius`; one with curves stays as it is.
QPainterPath Rounded(const QPainterPath& outline, double radius);

}  // namespace norvelis::drawing::render
