#pragma once

#include <string>

#include "drawing/model/names.h"

namespace norvelis::drawing::render {

/// A geometry row's values, in the published meaning of its type.
struct OutlineRow {
    Name type = Name::None;
    double x = 0, y = 0, a = 0, b = 0, c = 0, d = 0;
    std::string data;  ///< Of a row that holds many points: "NURBS(...)" or "POLYLINE(...)".
};

}  // namespace norvelis::drawing::render
