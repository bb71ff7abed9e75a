#pragma once

#include "drawing/stencils/background.h"

// What the backgrounds are put together from, one function a background.
namespace norvelis::drawing::stencils {

/// A layer that fills its outline.
Layer Filled(Frame frame, Path outline, std::string color, Fill fill = Fill::Solid, std::string color2 = {});
/// A layer of lines alone.
Layer Drawn(Frame frame, Path outline, std::string color, double weight = 0.8, int dash = 1);
/// The whole page in one colour, or running from one at the top to one at the bottom.
Layer Wash(std::string top, std::string bottom = {});

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

}  // namespace norvelis::drawing::stencils
