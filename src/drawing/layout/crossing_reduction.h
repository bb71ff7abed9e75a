#pragma once

#include <cstdint>

#include "drawing/layout/layers.h"

namespace norvelis::layout {

/// Crossings of all lines between neighbouring layers, counted by an accumulator tree.
/// Barth, Jünger, Mutzel: Simple and efficient bilayer cross counting (2004).
std::int64_t CountCrossings(const Layers& layers);

/// Orders the nodes of all layers for few crossings: barycentre sweeps (Sugiyama, Tagawa, Toda 1981) from several
/// starts, each followed by sifting (Matuszewski, Schönfeld, Molitor: Using sifting for k-layer straightline crossing
/// minimization, 1999); then the best is shaken and reduced again until a fixed amount of work is spent.
void ReduceCrossings(Layers& layers);

}  // namespace norvelis::layout
