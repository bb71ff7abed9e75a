#pragma once

#include <string>
#include <string_view>

// Text columns and letters. A report line is bytes and every byte is one column; columns count from 1. Blanks
// are spaces (0x20) alone. Inside the program text is UTF-8.
namespace norvelis {

/// The n bytes of `line` from 1-based column c, or what is left of them. Columns outside the line are empty:
/// never an error. The result points into `line`.
std::string_view Text(std::string_view line, long c, long n);

/// 1-based column of the first occurrence of `keyword` at or behind column `from`, 0 when there is none.
/// Case counts.
std::size_t Column(std::string_view line, std::string_view keyword, std::size_t from = 1);

/// Removes blanks at both ends.
std::string_view Trim(std::string_view text);

/// Removes blanks at the end.
std::string_view TrimEnd(std::string_view text);

std::string UpperCase(std::string_view text);  ///< A to Z only; other letters stay.
std::string LowerCase(std::string_view text);

/// Equality by the rule of names in this system: letter case (A to Z) and trailing blanks do not count.
bool SameName(std::string_view a, std::string_view b);

/// Case-insensitive (A to Z) equality, blanks counting.
bool EqualIgnoringCase(std::string_view a, std::string_view b);

/// Report bytes (Windows-1252) as UTF-8; the five bytes that the code page leaves undefined become the
/// control character of the same number.
std::string ToUtf8(std::string_view windows1252);

/// A number in the way a person would write it at the start of `text`: leading blanks, sign, digits,
/// fraction, exponent; 0 when there is none. Independent of the locale.
double Val(std::string_view text);

/// True when the whole trimmed text is one number.
bool IsNumeric(std::string_view text);

/// "True"/"False" in any case, or a number (non-zero is true). Any other text is RuntimeFailure 13, type
/// mismatch.
bool ToBoolean(std::string_view text);

inline constexpr std::string_view kLineBreak = "\r\n";

/// 32 upper-case hexadecimal digits of 16 bytes in memory order.
std::string HexText(const unsigned char (&bytes)[16]);

}  // namespace norvelis
