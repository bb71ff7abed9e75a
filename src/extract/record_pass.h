#pragma once

#include "extract/extraction_state.h"

namespace norvelis {

/// Second pass over a schema report: completes the skeletons one by one with their fields, sets and indexes.
/// RuntimeFailure 9 at the 601st field of a record and the 501st sort key of an index.
void IdmsUpdateRecords(ExtractionState& state);

}  // namespace norvelis
