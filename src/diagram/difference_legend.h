#pragma once

#include "diagram/drawing_state.h"

namespace norvelis {

/// A box for each mark with a line of the same mark to it, apart from the schema's own: what the marks mean.
void AddLegend(DrawingState& drawing, const PageRef& page);

}  // namespace norvelis
