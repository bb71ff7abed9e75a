#pragma once

#include <string>

namespace norvelis::tables {

/// What a column holds, in no server's words.
struct ColumnType {
    enum class Kind {
        None,  ///< No column can be made.
        SmallInteger,
        Integer,
        BigInteger,
        Decimal,
        SingleFloat,
        DoubleFloat,
        Text,
        FixedText,
        Given,  ///< The words of a person.
    };
    Kind kind = Kind::None;
    long length = 0;  ///< Characters of a text, digits of a decimal number, those behind the point included.
    long decimals = 0;  ///< Of a decimal number.
    std::string given = {};
    bool wide = false;  ///< A text of characters that are more than a byte in the record.

    bool operator==(const ColumnType&) const = default;
};

}  // namespace norvelis::tables
