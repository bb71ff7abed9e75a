#pragma once

#include "diagram/drawing_state.h"

namespace norvelis {

/// What a legend is made of.
struct LegendMasters {
    engine::Ref<engine::Master> heading, entry;
};

/// Whether the looks of this drawing mean something.
bool HasLegend(const DrawingState& drawing);

/// Beside the title, what fills, lines and marks of this page mean; nothing when they mean nothing.
void AddLegend(DrawingState& drawing, const PageRef& page, const LegendMasters& masters,
               engine::Shape& title);

}  // namespace norvelis
