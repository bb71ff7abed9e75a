#pragma once

#include <optional>
#include <string>

#include "store/connection.h"
#include "store/tables.h"

namespace norvelis::dictionary {

/// All rows of one of the dictionary tables, or those of one schema, in order of insertion: for what shows
/// tables as they are.
Recordset RowsOf(Connection& store, const TableDefinition& table, const std::optional<std::string>& schema);

}  // namespace norvelis::dictionary
