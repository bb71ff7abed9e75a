#pragma once

#include <string_view>

#include "store/connection.h"

// Records: rows of Record_Details of the type 'Record', and their fields. A row of the type 'index' is a box
// of its own beside the record that its next_step names; extractions write none, other programs may.
namespace norvelis::dictionary {

/// The records of that name, whatever their schema.
Recordset RecordsNamed(Connection& store, std::string_view name);
/// The record of that name in one schema; one row at most.
Recordset RecordIn(Connection& store, std::string_view schema, std::string_view name);

/// The records of one schema by name.
Recordset RecordsByName(Connection& store, std::string_view schema);

/// Column Recordname of the same, read at once.
Recordset RecordNames(Connection& store, std::string_view schema);

/// Columns Recordname and next_step of all records, read at once: for walks over many of them.
Recordset MemberLists(Connection& store);

/// The rows of Record_layout of the records of that name, in the order of the report.
Recordset FieldsOf(Connection& store, std::string_view record);

bool HasIndexBoxes(Connection& store);
Recordset IndexBoxesOf(Connection& store, std::string_view record);

}  // namespace norvelis::dictionary
