#pragma once

#include <string_view>

// COBOL pictures as the dictionary holds them.
namespace norvelis::cobol {

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

}  // namespace norvelis::cobol
