#pragma once

#include <string>
#include <string_view>

#include "cobol/picture.h"

// How COBOL items are stored on the mainframe, and how often.
namespace norvelis::cobol {

/// The usage and the repetition that share a column of the dictionary, which may be cut behind them.
struct Usage {
    enum class Form {
        Display,     ///< A byte for each place; the usage need not be written.
        DoubleByte,  ///< DISPLAY-1, NATIONAL: two bytes for each place.
        Binary,      ///< 2, 4 or 8 bytes by the number of digits.
        Packed,      ///< Two digits to the byte, and the sign.
        SingleFloat,
        DoubleFloat,
        Index,
        Pointer,
        Group,
        Other
    };
    Form form = Form::Display;
    std::string word;  ///< As the dictionary has it, in upper case; empty where it says none.
    bool occurs = false;
    long least = 1, most = 1;  ///< Occurrences; `most` is 0 when the number was cut off, too.
    bool never = false;        ///< `most` is 0, and was not cut off.
    std::string otherWords;  ///< What else the column holds: SYNC, DEPENDING ON, an OCCURS without a number.
};
Usage ReadUsage(std::string_view stored);

/// Bytes of one occurrence in the record; 0 when they cannot be told. A sign of its own is not counted.
long StoredBytes(const Picture& picture, const Usage& usage);

/// A number whose sign shares a byte with its last digit, unless it has a byte of its own.
bool IsSignedDisplay(const Picture& picture, const Usage& usage);

}  // namespace norvelis::cobol
