#pragma once

#include "cobol/picture.h"
#include "cobol/usage.h"
#include "sqlconv/tables/column_type.h"

// The types of columns that COBOL items ask for.
namespace norvelis::tables {

struct TypeRules {
    bool fixedText = false;    ///< CHAR in place of VARCHAR.
    bool widenBinary = false;  ///< Compilers that use the full range of binary numbers store more digits.
};

/// The type of one occurrence. None for groups and for what has no picture but needs one.
ColumnType TypeFor(const cobol::Picture& picture, const cobol::Usage& usage, const TypeRules& rules);

}  // namespace norvelis::tables
