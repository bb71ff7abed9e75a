#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "core/app_state.h"
#include "extract/dictionary_writer.h"
#include "extract/report.h"
#include "extract/report_index.h"
#include "store/connection.h"

// The two passes over a schema report. The first finds every record and its location mode; the second takes
// the records one by one and gathers fields, sets and indexes. The rows are those of the classic procedure,
// which read the report from the top again for each record, set and index, so that names match by substring
// and by prefix: a name finds every longer one that it begins.
//
// Failures are RuntimeFailures: 62 when the report ends where a location mode should be, 9 at the 601st field
// of a record and the 501st sort key of an index. The rows gathered until then are written all the same.
namespace norvelis {

/// State of one extraction. Texts of the report are bytes until they are stored.
struct ExtractionState {
    ExtractionState(AppState& app, Connection& connection, Report report, bool tellsRecords);

    AppState& app;
    Connection& connection;  ///< gConnection, or the private copy of a scheduled run.
    const Report report;
    const bool tellsRecords;  ///< Shows "Extracting Record: …" and steps the bar.

    std::string gSchemaName, gSchemaRelease, gSchemaVersion, gSchemaDate;
    std::string gNextStepList;
    std::array<std::string_view, 8> gIndexNames;

    std::unique_ptr<DictionaryWriter> writer;  ///< From the end of the header on.
    std::unique_ptr<ReportIndex> index;        ///< During the second pass.
};

/// First pass: reads the header, clears what the store holds of the schema, and adds Parents rows and
/// skeletons.
void CollectParentandChildren(ExtractionState& state);

/// Second pass: completes each skeleton in turn.
void IdmsUpdateRecords(ExtractionState& state);

/// Writes what the passes still hold.
void FinishExtraction(ExtractionState& state);

}  // namespace norvelis
