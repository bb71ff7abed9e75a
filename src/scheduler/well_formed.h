#pragma once

#include <pugixml.hpp>
#include <string_view>

namespace norvelis {

/// The parser's result for `text`, which also refuses what the parser lets pass: several roots or text beside
/// the root, an attribute given twice, a bare "<" or "&" in a value.
pugi::xml_parse_result CheckWellFormed(std::string_view text);

}  // namespace norvelis
