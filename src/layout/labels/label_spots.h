#pragma once

#include "layout/spacing/sketch.h"

namespace norvelis::layout {

/// Gives each label a spot on its line where the space for it is there or cheapest to make: between two lines
/// that cross its own, never over one.
void ChooseLabelSpots(Sketch& sketch);

/// Labels that could not get their space where they are: they cover a box, another label or another line.
std::vector<std::size_t> CoveredLabels(const Sketch& sketch);

/// Gives them spots on other pieces of their lines, as long as there are some that were not `tried` before:
/// for each line, a mark for each of its segments. False when there is none.
bool MoveLabels(Sketch& sketch, const std::vector<std::size_t>& covered,
                std::vector<std::vector<char>>& tried);

}  // namespace norvelis::layout
