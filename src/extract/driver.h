#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/app_state.h"
#include "dictionary/writer.h"
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
};

/// From the menu: into the open store.
ExtractionDriver InteractiveDriver(AppState& app, std::function<void()> refresh);
/// From the scheduler: unattended, into the private copy of the store.
ExtractionDriver SchedulerDriver(AppState& app, Connection& batchConnection);

/// Extracts a report, which becomes gReportFile. Nothing when it was refused, in words to the person. A
/// RuntimeFailure that the report itself causes (9, 62) goes through after what was gathered is in the store;
/// any other leaves the store as it was, as Canceled does until the dictionary is whole.
std::optional<dictionary::Counts> process_Classic_Extract_Report(AppState& app,
                                                                 const ExtractionDriver& driver,
                                                                 ReportFile report);

}  // namespace norvelis
