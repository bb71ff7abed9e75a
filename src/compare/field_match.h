#pragma once

#include "compare/pairing.h"
#include "dictionary/schema_contents.h"

namespace norvelis::compare {

/// The fields of one record in two editions. Fields of one name are one; several of one name (fillers) go by
/// what they are and where. A field under a new name is one of the same definition between the same
/// neighbors, or of the same name but for the number of the record, where that has changed.
Pairing MatchFields(const dictionary::RecordContents& former, const dictionary::RecordContents& present);

}  // namespace norvelis::compare
