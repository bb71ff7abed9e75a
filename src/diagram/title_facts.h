#pragma once

#include <string>

#include "diagram/drawing_state.h"

namespace norvelis {

/// Two lines for the title of a page: the schema with its version and release; the report's date, and how
/// many records, sets and indexes there are. A page that shows some of them says "8 of 14 records" or "2 of 5
/// indexes". What the dictionary does not know is left out; a drawing of differences, which has two editions
/// in it, has no counts.
std::string TitleFacts(DrawingState& drawing);

}  // namespace norvelis
