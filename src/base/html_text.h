#pragma once

#include <string>
#include <string_view>

namespace norvelis {

/// Text as a browser shows it letter by letter, in an element or in an attribute: never markup. CR goes;
/// other control characters, which a page may not hold, become U+FFFD.
std::string HtmlText(std::string_view text);

}  // namespace norvelis
