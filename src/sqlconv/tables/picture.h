#pragma once

#include <string_view>

#include "sqlconv/tables/column_type.h"

// COBOL pictures and usages as the dictionary holds them, and the types that they ask for.
namespace norvelis::tables {

/// What a PICTURE says. A picture that does not follow the grammar is Invalid, and all else is then 0.
struct Picture {
    enum class Kind { Invalid, Number, Text, WideText, Edited };
    Kind kind = Kind::Invalid;
    bool isSigned = false;
    long nines = 0;     ///< Digits that are stored.
    long digits = 0;    ///< Digits of the value: with the places that P adds.
    long decimals = 0;  ///< Of them behind the decimal point.
    long width = 0;     ///< Characters of a text, or printed by an edited picture.
};

/// The column of the dictionary runs into that of the start position: the picture is its first word.
std::string_view PictureWord(std::string_view stored);
Picture ReadPicture(std::string_view word);

/// The usage and the repetition that share a column of the dictionary, which may be cut behind them.
struct Usage {
    enum class Form { Display, Binary, Packed, SingleFloat, DoubleFloat, Index, Group, Other };
    Form form = Form::Display;
    bool occurs = false;
    long least = 1, most = 1;  ///< Occurrences; `most` is 0 when the number was cut off, too.
    bool never = false;        ///< `most` is 0, and was not cut off.
};
Usage ReadUsage(std::string_view stored);

struct TypeRules {
    bool fixedText = false;    ///< CHAR in place of VARCHAR.
    bool widenBinary = false;  ///< Compilers that use the full range of binary numbers store more digits.
};

/// The type of one occurrence. None for groups and for what has no picture but needs one.
ColumnType TypeFor(const Picture& picture, const Usage& usage, const TypeRules& rules);

/// Bytes of one occurrence in the record; 0 when they cannot be told. A sign of its own is not counted.
long StoredBytes(const Picture& picture, const Usage& usage);

}  // namespace norvelis::tables
