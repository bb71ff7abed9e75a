#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "core/app_state.h"
#include "dictionary/writer.h"
#include "extract/findings.h"
#include "extract/report_file.h"
#include "store/connection.h"

namespace norvelis {

/// How the callers of an extraction differ. The steps are the same for all.
struct ExtractionDriver {
    bool attended;      ///< Boxes, questions, status line and settings screen; otherwise all words go to the
                        ///< process log and the store is emptied without asking.
    std::string store;  ///< The store file that is tested before the question and named in the final text.
    Connection& connection;
    std::function<void()> refresh;  ///< Shows the new dictionary; may be empty.

    /// Asked, with a sentence that says what, before an extraction would leave less than there is. Empty: it
    /// goes on.
    std::function<bool(const std::string& loss)> acceptsLoss = {};
    bool keepsFormer = false;            ///< A copy of the store as it was stays beside it.
    bool refusesWarnings = false;        ///< Then the store stays as it was.
    bool comparesEditions = false;       ///< With the edition of the schema that it replaces.
    std::string schemaWhenUnnamed = {};  ///< Name for a report that has none; may be empty.
};

/// From the menu: into the open store.
ExtractionDriver InteractiveDriver(AppState& app, std::function<void()> refresh);
/// From the scheduler: unattended, into the private copy of the store.
ExtractionDriver SchedulerDriver(AppState& app, Connection& batchConnection);

/// What an extraction did and found.
struct ExtractionResult {
    bool done = false;  ///< Otherwise the dictionary is as it was.
    dictionary::Counts counts;
    std::vector<Finding> findings;            ///< By line.
    std::vector<std::string> removedSchemas;  ///< Others that "delete all" removed.
    /// What is different from the edition that was replaced, in one line; empty when there was none, or
    /// nobody wants to know.
    std::string differences;

    explicit operator bool() const { return done; }
};

/// Extracts a report, which becomes gReportFile. Not done when it was refused: in words to the person, by
/// acceptsLoss, or for its warnings. A RuntimeFailure that the report itself causes (9, 62) goes through
/// after what was gathered is in the store; any other leaves the store as it was, as Canceled does until
/// the dictionary is whole.
ExtractionResult process_Classic_Extract_Report(AppState& app, const ExtractionDriver& driver,
                                                ReportFile report);

/// True for a failure that the report itself causes: too many fields or keys, an end in the middle of a
/// record.
bool IsFailureOfTheReport(const RuntimeFailure& failure);

/// Extracts a valid report into an empty store; nothing is asked or said. RuntimeFailure as above.
ExtractionResult ExtractInto(AppState& app, Connection& store, ReportFile report,
                             const std::string& schemaWhenUnnamed);

/// What an extraction of a valid report would find, without a store. RuntimeFailure as above.
std::vector<Finding> FindingsIn(AppState& app, ReportFile report, const std::string& schemaWhenUnnamed);

}  // namespace norvelis
