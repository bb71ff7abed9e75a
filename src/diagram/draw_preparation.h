#pragma once

#include <string>

#include "diagram/drawing_state.h"

// What every command that draws begins with: where its files go, and the bars.
namespace norvelis {

/// The folder chosen for this drawing, else the one of the setting; empty when there is neither.
std::string ChosenLocation(DrawingState& drawing);
/// Where drawings go when none is chosen.
std::string DefaultLocation(const DrawingState& drawing);
/// The chosen folder, else the default one.
std::string DrawingLocation(DrawingState& drawing);

/// The bars for the length of a command, which begins with nothing done.
ShownBars BarsFromNothing(Progress& progress);
void ProgressSetMax(DrawingState& drawing, int count);
void ProgressStep(DrawingState& drawing);

}  // namespace norvelis
