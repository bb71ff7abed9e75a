#pragma once

#include <optional>
#include <string>

#include "dictionary/schema_contents.h"

namespace norvelis::copybook {

/// A field of the dictionary, its texts taken apart.
struct Item {
    int level = 2;                      ///< 2 to 49.
    std::string name;                   ///< As in the dictionary, trimmed.
    std::string picture;                ///< Empty on groups and on usages that have none.
    std::string usage;                  ///< "DISPLAY", "COMP-3" ...; "GROUP" for a group.
    long occurs = 1;                    ///< The largest number of times.
    std::optional<long> occursAtLeast;  ///< Of OCCURS n TO m.
    std::string otherWords;             ///< What else the usage column holds: SYNC, DEPENDING ON.
    std::optional<long> start, end;  ///< Bytes of the record, from 1; of the first time in a repeated group.

    bool IsGroup() const { return usage == "GROUP"; }
    bool IsFiller() const;
};

Item ReadItem(const dictionary::FieldContents& field);

}  // namespace norvelis::copybook
