#pragma once

#include <array>
#include <string>

#include "sqlconv/dialects/dialect.h"
#include "sqlconv/tables/schema_model.h"

// What a conversion to tables made of a schema, for people.
namespace norvelis::tables {

struct Count {
    std::size_t converted = 0, all = 0;
};

/// How much of the schema is in the tables. A set counts once, however many members it has, and is converted
/// when each of them has its foreign key.
struct Totals {
    Count records, fields, sets, indexes;  ///< Fields without groups and fillers.
    std::size_t tables = 0, foreignKeys = 0;
    std::size_t toLookAt = 0;
};
Totals TotalsOf(const SchemaModel& model);

/// "12 of 13 sets are foreign keys", and so on.
std::array<std::string, 5> TotalsInWords(const Totals& totals);

/// "record", "field", "set", "index", "option".
std::string_view SubjectName(Outcome::Subject subject);

/// One page that needs nothing else: totals, what to look at, then each record with its fields, sets and
/// indexes.
std::string ReportHtml(const SchemaModel& model, const Dialect& dialect);

}  // namespace norvelis::tables
