#pragma once

#include "layout/spacing/sketch.h"

namespace norvelis::layout {

/// Neighbouring parallel segments of lines change places where that saves crossings and no box bars it:
/// the order of nudging in Wybrow, Marriott, Stuckey: Orthogonal connector routing (2009), found by
/// exchanges. Labels must not have been placed yet.
void Untangle(Sketch& sketch);

}  // namespace norvelis::layout
