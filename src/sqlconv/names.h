#pragma once

#include <string>
#include <string_view>

namespace norvelis {

/// False for a word that SQL keeps for itself, in any letter case: true means that the word may be used.
bool IsReservedWord(std::string_view text);

/// A dictionary name as a SQL name: blanks, hyphens and parentheses become underscores, a reserved word gets
/// "_c" at its end. Every other character stays.
std::string CleanName(std::string_view text);

/// The type of a column for a COBOL picture; empty when the picture tells none. Length, decimals and usage do
/// not count.
std::string SqlTypeFor(std::string_view picture);

}  // namespace norvelis
