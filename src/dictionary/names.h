#pragma once

#include "store/row_reader.h"

// The names of everything in the dictionary, all schemas after each other as the store has them: for a search
// over all of it.
namespace norvelis::dictionary {

RowReader NamesOfRecords(Connection& store);  ///< Schema, record, area, record id.
RowReader NamesOfFields(Connection& store);   ///< Schema, record, field; in the order of the report.
RowReader NamesOfSets(Connection& store);     ///< Schema, set, owner, member.
RowReader NamesOfIndexes(Connection& store);  ///< Schema, index, member.

}  // namespace norvelis::dictionary
