#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "store/connection.h"

// The schemas of the dictionary and their entry records: those that are found without a set.
namespace norvelis::dictionary {

/// Column schemaname, each schema that has an entry record once: in the order in which they were extracted,
/// or by name.
Recordset Schemas(Connection& store);
Recordset SchemasByName(Connection& store);

/// Column schemaname, each schema that has a record of any kind once, by name.
Recordset SchemasOfRecords(Connection& store);

/// The rows of schema_details; one at most.
Recordset SchemaHeader(Connection& store, std::string_view schema);

/// The name as the dictionary writes it, trimmed; nothing when no record is of a schema of that name in any
/// letter case.
std::optional<std::string> StoredSchemaName(Connection& store, std::string_view schema);

/// How many records of any kind the schema has.
long CountRecords(Connection& store, std::string_view schema);

/// What a schema holds; a set or index with several members counts once.
struct SchemaCounts {
    long records = 0, sets = 0, indexes = 0;
};
SchemaCounts CountContents(Connection& store, std::string_view schema);

/// The rows of Parents of one schema: in the order of the report, or by name.
Recordset EntryRecords(Connection& store, std::string_view schema);
Recordset EntryRecordsByName(Connection& store, std::string_view schema);
long CountEntryRecords(Connection& store, std::string_view schema);

}  // namespace norvelis::dictionary
