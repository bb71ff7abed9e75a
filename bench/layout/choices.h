#pragma once

#include "layout/graph/style.h"

namespace norvelis::layout {

/// A layout as users choose it.
struct Choice {
    const char* name;
    Style style;
};

inline const Choice choices[] = {
    {"Default", StyleOfCells(1, 0, 5, 0)},           {"RadialDefault", StyleOfCells(3, 2, 2, 2)},
    {"RadialRightAngle", StyleOfCells(3, 3, 1, 1)},  {"RadialSimpleVH", StyleOfCells(3, 3, 22, 2)},
    {"TopToBottom", StyleOfCells(1, 1, 3, 1)},       {"LeftToRight", StyleOfCells(2, 1, 1, 2)},
    {"CircularSimpleHV", StyleOfCells(6, 2, 21, 2)}, {"CircularDeep", StyleOfCells(6, 2, 0, 0)},
};

}  // namespace norvelis::layout
