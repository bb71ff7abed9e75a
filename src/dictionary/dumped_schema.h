#pragma once

#include <string>
#include <string_view>

#include "dictionary/schema_contents.h"

namespace norvelis::dictionary {

/// A schema out of what the command dump of norvelis-cli has printed. std::runtime_error with the reason when
/// the text is no such output or does not hold the schema.
SchemaContents ReadDumpedSchema(const std::string& dump, std::string_view schema);

}  // namespace norvelis::dictionary
