#pragma once

#include <string_view>

#include "store/connection.h"

namespace norvelis::dictionary {

/// Removes every row of the schema from the dictionary tables.
void ClearSchema(Connection& store, std::string_view schema);

/// Removes all rows of all schemas but those of schema_details, which go when their schema is extracted
/// again.
void ClearAll(Connection& store);

}  // namespace norvelis::dictionary
