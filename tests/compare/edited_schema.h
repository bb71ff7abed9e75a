#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "dictionary/schema_contents.h"

namespace norvelis::compare {

/// Two editions of a schema, and what was done to the first to make the second.
struct EditedSchema {
    dictionary::SchemaContents former, present;
    std::set<std::string> edits;  ///< "field renamed NEW-12-0104 in PART-4", without fields that moved by it.
    std::size_t renames = 0;
};

/// Equal seeds give equal pairs. Edits do not touch each other: what could be read in two ways is left out.
EditedSchema MakeEditedSchema(std::uint64_t seed);

}  // namespace norvelis::compare
