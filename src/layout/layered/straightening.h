#pragma once

#include "layout/graph/graph.h"
#include "layout/graph/style.h"
#include "layout/layered/grid.h"

namespace norvelis::layout {

/// Where a line may meet its boxes without a bend: from x to x.
struct Reach {
    double upperLeast = 0, upperMost = 0, lowerLeast = 0, lowerMost = 0;
};

/// Takes needless bends out of lines: vertical runs that have space to be in line with the run before or
/// after them move there, which makes no line longer. Boxes stay.
void StraightenLines(const Style& style, const std::vector<Reach>& reaches, Grid& grid);

}  // namespace norvelis::layout
