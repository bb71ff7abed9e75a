#pragma once

#include <string>
#include <vector>

#include "dictionary/schema_contents.h"

// What is different between two editions of a schema.
//
// Texts are compared by the rule of names: letter case and blanks do not count. Where one thing names another
// (the set of a VIA record, the key of an index), the other's new name is no difference: a rename is one
// difference, however often the schema has the name.
namespace norvelis::compare {

enum class Kind { Schema, Record, Field, Set, Index, Area };

enum class Change {
    Added,
    Removed,
    Renamed,  ///< Its first value is the name; others may have changed with it.
    Changed,
    Moved  ///< A field that begins at another byte and is the same in all else.
};

/// Texts as a person reads them. Either may be empty.
struct ChangedValue {
    std::string what;  ///< "length", "picture"; empty for the description of what was added or removed.
    std::string former, present;
};

/// One thing that is different. The fields of a record that was added or removed are none of their own.
struct Difference {
    Kind kind;
    Change change;
    std::string name;   ///< The present name; of what was removed, the former one.
    std::string where;  ///< Record of a field, owners of a set, members of an index; else empty.
    std::vector<ChangedValue> values;  ///< Never empty.
};

/// Schema, records with their fields, sets, indexes, areas. Each in the order of the present schema, then
/// what was removed in the order of the former.
using Comparison = std::vector<Difference>;

/// Equal schemas give equal comparisons. Areas are those of the records, for a schema lists no others.
Comparison Compare(const dictionary::SchemaContents& former, const dictionary::SchemaContents& present);

}  // namespace norvelis::compare
