#pragma once

#include "compare/pairing.h"
#include "dictionary/schema_contents.h"

namespace norvelis::compare {

/// Records of one name are one. Of the others, two are one under a new name when enough of them has stayed:
/// their fields above all, the sets they take part in, their number. A record whose number alone came back is
/// another record.
Pairing MatchRecords(const dictionary::SchemaContents& former, const dictionary::SchemaContents& present);

}  // namespace norvelis::compare
