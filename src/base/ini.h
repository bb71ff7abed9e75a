#pragma once

#include <string>
#include <string_view>

// INI files: sections and keys ignore letter case; a value is what is behind the equals sign, trimmed.
namespace norvelis {

/// Empty when the file, the section or the key is missing. A value is cut at 255 characters.
std::string ReadINIValue(std::string_view section, std::string_view key, std::string_view file);

/// Sets one value and leaves every other line, comment and line end of the file as it was; section, key and
/// file are created when missing. False when the file could not be written; it is then as it was.
bool WriteINIValue(std::string_view section, std::string_view key, std::string_view value,
                   std::string_view file);

}  // namespace norvelis
