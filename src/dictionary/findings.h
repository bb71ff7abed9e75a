#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

// What extractions found wrong with their reports: rows of a table of our own, which other programs do not
// know and do not need. It is made when it is first needed. Its form has a number; a table of a newer form is
// a RuntimeFailure (StoreFailure) with words that say so.
namespace norvelis::dictionary {

inline constexpr std::string_view kWarning = "warning", kNote = "note";

struct FindingRow {
    std::string schema, severity, kind;
    std::size_t line = 0;  ///< 0: about the whole report.
    std::string subject, reason, remedy;
};

/// The schema's findings, in place of those that are there. All rows must be of this schema.
void ReplaceFindings(Connection& store, std::string_view schema, const std::vector<FindingRow>& findings);

/// Of all schemas, in the order in which they were written; empty when there is no such table.
std::vector<FindingRow> Findings(Connection& store);
std::size_t CountWarnings(Connection& store);

/// Of one schema, or of all.
void ClearFindings(Connection& store, const std::optional<std::string_view>& schema);

/// The rows of Record_Details that have no box text: the sections of these records were not read to the end.
Recordset IncompleteRecords(Connection& store);

}  // namespace norvelis::dictionary
