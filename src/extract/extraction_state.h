#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "dictionary/writer.h"
#include "extract/findings.h"
#include "extract/report.h"
#include "extract/report_index.h"
#include "store/connection.h"

namespace norvelis {

/// State of one extraction, handed to the first pass (parent_pass.h) and then to the second (record_pass.h).
/// Texts of the report are bytes until they are stored.
///
/// The rows are those of the classic procedure, which read the report from the top again for each record, set
/// and index, so that names match by substring and by prefix: a name finds every longer one that it begins.
struct ExtractionState {
    ExtractionState(AppState& app, Connection& connection, Report report, bool reportsRecords);

    AppState& app;
    Connection& connection;  ///< gConnection, or the private copy of a scheduled run.
    const Report report;
    const bool reportsRecords;      ///< Shows "Extracting Record: …" and steps the bar.
    std::string schemaWhenUnnamed;  ///< Name for a report that has none; may be empty.

    std::string gSchemaName, gSchemaRelease, gSchemaVersion, gSchemaDate;
    std::string gNextStepList;
    std::array<std::string_view, 8> gIndexNames;

    std::unique_ptr<dictionary::Writer> writer;  ///< From the end of the header on.
    std::unique_ptr<ReportIndex> index;          ///< During the second pass.
    std::vector<Finding> findings;               ///< In the order in which they were met.

    /// Adds a finding about the line that begins at `begin`. Subject and reason are report bytes.
    void Find(FindingKind kind, std::size_t begin, std::string_view subject, std::string_view reason);
    /// The same about the report as a whole.
    void FindInReport(FindingKind kind, std::string_view subject, std::string_view reason);

    /// Writes what the passes still hold; after a failure of the report too, whose rows until then are kept.
    void Finish();
};

}  // namespace norvelis
