#pragma once

#include <cstdint>

#include "layout/layered/layers.h"

namespace norvelis::layout {

/// Crossings of all lines between neighbouring layers, counted by an accumulator tree.
/// Barth, Jünger, Mutzel: Simple and efficient bilayer cross counting (2004).
std::int64_t CountCrossings(const Layers& layers);

/// A trial spends a sixteenth of the work.
enum class Effort { Trial, Full };

/// Orders the nodes of all layers for few crossings, by global sifting (block_order.h) from several starts
/// (start_orders.h); then parts of the best order are reversed or moved and sifted again, as long as a
/// fixed amount of work lasts (iterated local search: Lourenço, Martin, Stützle 2003).
void ReduceCrossings(Layers& layers, Effort effort);

}  // namespace norvelis::layout
