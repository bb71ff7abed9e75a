#pragma once

#include <string>

#include "diagram/draw_sequence.h"
#include "diagram/record_choice.h"

// Drawings of a part of a schema, or of the whole with a page for each area, in files of their own.
namespace norvelis {

/// location\schema\name of the choice.vsd. Asks nothing; a choice that leaves nothing to draw is reported.
DrawnFile DrawChosenRecords(DrawingState& drawing, const std::string& schema, const RecordChoice& choice);

/// Words, without a full stop, for a drawing that was just made and cannot be read on the largest sheet: one
/// by area can. Empty for any other.
std::string SizeHint(const DrawingState& drawing);

}  // namespace norvelis
