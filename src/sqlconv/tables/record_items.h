#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cobol/picture.h"
#include "cobol/usage.h"
#include "dictionary/schema_contents.h"
#include "sqlconv/tables/item_type.h"
#include "sqlconv/tables/options.h"

namespace norvelis::tables {

/// A data item of a record: a field of the dictionary, read.
struct Item {
    enum class State {
        Column,    ///< Becomes a column.
        Group,     ///< What it holds may become columns.
        Filler,    ///< Has no name to be found by.
        Overlaps,  ///< Another description of bytes that are a column already.
        Unmapped,  ///< Nothing says what it holds.
        LeftOut,   ///< The person's wish.
    };
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    const dictionary::FieldContents* field = nullptr;
    const FieldOptions* options = nullptr;
    std::string name;
    std::size_t group = kNone;  ///< The item that holds it.
    std::size_t end = 0;        ///< One behind the last item that it holds, or itself.
    cobol::Usage usage;
    cobol::Picture picture;
    ColumnType type;
    State state = State::Unmapped;
    bool repeats = false;      ///< It or a group around it occurs several times.
    long start = 0, last = 0;  ///< Positions of its first occurrence in the record, from 1; 0: not known.
    bool isValue = false;      ///< No group and no filler.
    std::string why;           ///< It is no column, or a person should look at it.

    bool IsFiller() const;
};

/// The items of a record in the order of the report, groups before what they hold.
std::vector<Item> ReadItems(const dictionary::RecordContents& record, const RecordOptions* wishes,
                            const TypeRules& rules);

}  // namespace norvelis::tables
