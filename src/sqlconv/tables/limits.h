#pragma once

#include <cstddef>
#include <string_view>

namespace norvelis::tables {

/// What a server can hold, as numbers.
struct Limits {
    std::size_t name = 63;
    bool nameInBytes = true;  ///< Else in characters.

    double columns = 1600;
    double row = 8000;  ///< Bytes of the columns that a row keeps in its page.
    double bytesPerCharacter = 4;
    double bytesPerWideCharacter = 4;
    double rowBytesPerCharacter = 1;
    double textInRow = 24;     ///< Bytes up to which a text stays in the page.
    double textOutside = 24;   ///< Bytes that a longer one still takes there.
    double wholeRow = 1e9;     ///< Bytes of all columns, wherever they are kept.
    double definition = 1e12;  ///< Bytes of what the server keeps of a table's columns: names and comments.
    double longestComment = 1e9;  ///< Bytes of a column's comment.

    /// Characters past which a text is of a type that the row only points to.
    long longText = 1'000'000'000;

    std::string_view takenColumns;  ///< Upper-case words that no column may be called.
    std::string_view takenPrefix;   ///< In upper case: what no table or index may begin with.

    std::size_t keyColumns = 32;
    double primaryKey = 2600;  ///< Bytes.
    double index = 2600;       ///< Bytes.
};

}  // namespace norvelis::tables
