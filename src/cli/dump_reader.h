#pragma once

#include <string>
#include <string_view>

#include "dictionary/schema_contents.h"

namespace norvelis::cli {

/// A schema out of what `dump` has printed. std::runtime_error with the reason when the text is no such
/// output or does not hold the schema.
dictionary::SchemaContents ReadDumpedSchema(const std::string& dump, std::string_view schema);

}  // namespace norvelis::cli
