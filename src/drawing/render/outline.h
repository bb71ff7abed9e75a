#pragma once

#include <QPainterPath>
#include <string>
#include <vector>

#include "drawing/model/names.h"

// Geometry rows as outlines. Local coordinates of the shape: inches, y upwards.
namespace norvelis::drawing::render {

/// A geometry row's values, in the published meaning of its type.
struct OutlineRow {
    Name type = Name::None;
    double x = 0, y = 0, a = 0, b = 0, c = 0, d = 0;
    std::string data;  ///< Of a row that holds many points: "NURBS(...)" or "POLYLINE(...)".
};

/// `width` and `height` are the shape's, which the Rel... rows count in.
QPainterPath Outline(const std::vector<OutlineRow>& rows, double width, double height);

/// The outline with its corners rounded by `radius`; one with curves stays as it is.
QPainterPath Rounded(const QPainterPath& outline, double radius);

}  // namespace norvelis::drawing::render
