#pragma once

#include "extract/extraction_state.h"

namespace norvelis {

/// Looks through the set section behind the second pass: sets that gave no rows, owners and members that are
/// no records, and members that only the records' own lists of memberships know.
void CheckSets(ExtractionState& state);

}  // namespace norvelis
