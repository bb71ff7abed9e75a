#pragma once

#include <optional>
#include <string_view>

// Pictures and usages of COBOL items, and the bytes that they take on the mainframe.
namespace norvelis::copybook {

/// What a usage of a schema report means for a copybook.
enum class Storage {
    Display,     ///< A byte for each place; the usage need not be written.
    DoubleByte,  ///< DISPLAY-1, NATIONAL: two bytes for each place.
    Binary,      ///< 2, 4 or 8 bytes by the number of digits.
    Packed,      ///< Two digits to the byte, and the sign.
    ShortFloat,  ///< 4 bytes, no picture.
    LongFloat,   ///< 8 bytes, no picture.
    Address,     ///< INDEX, POINTER: 4 bytes, no picture.
    Unknown
};
Storage StorageOf(std::string_view usage);

bool NeedsPicture(Storage storage);

/// The bytes of one item; nothing when the picture is none that a compiler takes, or the usage is unknown.
std::optional<long> BytesOf(std::string_view picture, Storage storage);

/// A number whose sign shares a byte with its last digit, unless it has a byte of its own.
bool IsSignedDisplay(std::string_view picture, Storage storage);

}  // namespace norvelis::copybook
