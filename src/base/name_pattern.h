#pragma once

#include <string_view>

namespace norvelis {

/// Whether a name fits a pattern in which * stands for any characters, none included, and ? for one; letter
/// case (A to Z) and trailing blanks do not count. Characters are bytes.
bool FitsPattern(std::string_view name, std::string_view pattern);

}  // namespace norvelis
