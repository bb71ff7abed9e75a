#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "scheduler/jobs.h"
#include "scheduler/xml.h"

// What the buttons of the scheduler screen do and say, free of the screen. A failure of the store goes
// through unless a function says otherwise. Those that change jobs give true when the screen's trees may have
// become old.
namespace norvelis::commands {

/// Lets the person pick a schema report; nothing when none was picked, or a box has refused the file.
std::optional<std::string> ChooseReport(AppState& app);

/// Books a job for each of the dates, row by row. Asks first when one of them has passed. A failure is said
/// in a box with how many rows there are.
bool CreateSchedules(AppState& app, const Job& details, const std::vector<std::string>& dates);
/// `nextDate` is the text of the date that the job is to get.
bool UpdateSchedule(AppState& app, Job job, const std::string& nextDate);
/// With one question for all. A failure is logged and said in a box.
bool DeleteSchedules(AppState& app, const std::vector<std::int64_t>& ids);
bool RunSchedulesAgain(AppState& app, const std::vector<std::int64_t>& ids);

/// A definition from a file, or nothing; a box says why a file is none.
std::optional<XmlNode> OpenDefinition(AppState& app);
void SaveDefinition(AppState& app, const XmlNode& scheduleElement);

/// The drawings in the folder of the jobs of this name. RuntimeFailure 76 for a name that no folder can have.
std::vector<std::string> DrawingsOfJob(const AppState& app, const std::string& name);
/// What to say when the file that the job names as its drawing is not there.
std::string WhereTheDrawingIs(const AppState& app, const Job& job);

}  // namespace norvelis::commands
