#pragma once

#include <string>
#include <string_view>

// The parts of a page's address: letters, digits, hyphens and underscores whatever the name. Names that are
// the same give the same anchor, others never do.
namespace norvelis::publish {

std::string RecordAnchor(std::string_view name);
std::string SetAnchor(std::string_view name);
std::string IndexAnchor(std::string_view name);
std::string AreaAnchor(std::string_view name);
std::string FieldAnchor(std::string_view name);  ///< In the list of fields that several records have.
std::string BoxAnchor(std::string_view record);  ///< In the drawing.

}  // namespace norvelis::publish
