#pragma once

#include <optional>
#include <string>

#include "cobol/usage.h"
#include "dictionary/schema_contents.h"

namespace norvelis::copybook {

/// A field of the dictionary, its texts taken apart.
struct Item {
    int level = 2;        ///< 2 to 49.
    std::string name;     ///< As in the dictionary, trimmed.
    std::string picture;  ///< Empty on groups and on usages that have none.
    cobol::Usage usage;
    long occurs = 1;                 ///< The largest number of times.
    std::optional<long> start, end;  ///< Bytes of the record, from 1; of the first time in a repeated group.

    bool IsGroup() const { return usage.form == cobol::Usage::Form::Group; }
    bool IsFiller() const;
};

Item ReadItem(const dictionary::FieldContents& field);

}  // namespace norvelis::copybook
