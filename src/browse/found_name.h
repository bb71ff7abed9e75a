#pragma once

#include <string>

#include "browse/find_index.h"
#include "browse/record_tree.h"

// What can be said of a name that was found, and where it is now.
namespace norvelis {

/// The record that has it, owner and member of a set; empty for schemas and records.
std::string WhereOf(const FoundName& found);

/// Whether the dictionary has it now; RuntimeFailure when the store refuses.
bool IsInDictionary(Connection& store, const FoundName& found);
/// Says that it is gone.
std::string WordsForGone(const FoundName& found);

/// The node of a schema or record; of a set its member's below its owner. kNoNode when the tree has none: no
/// set leads to the record from the top, or the tree is older.
NodeIndex NodeOf(const RecordTree& tree, const FoundName& found);

}  // namespace norvelis
