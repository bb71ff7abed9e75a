#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvelis::repair {

/// How a report's characters are written in its file.
enum class Encoding { SingleByte, Utf16LittleEndian, Utf16BigEndian, Ebcdic037, Ebcdic1047 };

/// The name for a person and for options.
std::string_view NameOf(Encoding encoding);
/// The encoding of that name, in any letter case and in the usual spellings (037, IBM037, CP037, ...).
std::optional<Encoding> EncodingNamed(std::string_view name);

/// Looks for a keyword in each encoding. SingleByte when it is found in none.
Encoding DetectEncoding(std::string_view bytes);

/// The report in the single-byte encoding that the reader wants; a character that it does not have becomes a
/// question mark. Both EBCDIC line ends, 0x15 and 0x25, become LF. RuntimeFailure 5 where the machine's iconv
/// does not know the encoding.
std::string Decode(std::string_view bytes, Encoding encoding);

}  // namespace norvelis::repair
