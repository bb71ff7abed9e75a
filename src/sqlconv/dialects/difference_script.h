#pragma once

#include "sqlconv/dialects/dialect.h"
#include "sqlconv/dialects/script.h"

namespace norvelis::tables {

/// What brings tables of an earlier model up to a later one without losing data: new tables, columns, keys
/// and indexes. All else is in comments, for a person to decide.
Script MakeDifferenceScript(const SchemaModel& earlier, const SchemaModel& later, const Dialect& dialect);

}  // namespace norvelis::tables
