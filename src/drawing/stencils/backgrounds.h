#pragma once

#include <vector>

#include "drawing/stencils/background.h"

// The eighteen page backgrounds, one function each.
namespace norvelis::drawing::stencils {

// Patterns and instruments.
Background Steel();
Background HighTech();
Background Stripes();
Background Web();
Background Orbit();
Background World();
Background Compass();
Background None();
Background Geometric();
Background Cosmic();

// Scenes of nature and places.
Background Rain();
Background Leaf();
Background Horizon();
Background Clouds();
Background City();
Background Mountains();
Background Expedition();
Background Tranquil();

/// All of them, in the order in which the settings screen offers them.
std::vector<Background> Backgrounds();

}  // namespace norvelis::drawing::stencils
