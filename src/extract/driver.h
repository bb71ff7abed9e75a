#pragma once

#include <functional>
#include <string>

#include "core/app_state.h"
#include "store/connection.h"

namespace norvelis {

/// What sets the roads to an extraction apart. The steps are the same for all.
struct ExtractionDriver {
    bool attended;  ///< Boxes, questions, status line and settings screen; otherwise all words go to the
                    ///< process log and the store is emptied without asking.
    std::string store;  ///< The store file that is tested before the question and named in the final text.
    Connection& connection;
    std::function<void()> refresh;  ///< Shows the new dictionary; may be empty.
};

/// From the menu: into the open store.
ExtractionDriver InteractiveDriver(AppState& app, std::function<void()> refresh);
/// From the tree screen of a scheduled run: asks like the menu's, names the store of the job.
ExtractionDriver JobScreenDriver(AppState& app, const std::string& job, std::function<void()> refresh);
/// From the scheduler: unattended, into the private copy of the store.
ExtractionDriver SchedulerDriver(AppState& app, Connection& batchConnection);

/// Extracts the report named by the setting ReportLocation. False when it was refused with words to the
/// person; a RuntimeFailure goes through after what was gathered is in the store.
bool process_Classic_Extract_Report(AppState& app, const ExtractionDriver& driver);

}  // namespace norvelis
