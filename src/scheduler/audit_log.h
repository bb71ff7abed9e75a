#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "scheduler/jobs.h"

// The log that a person reads in the morning: a line when a job begins and one when it ends. Several programs
// append to it, each line in one piece. At 10 MB a new file is begun and the former one kept once. A log that
// cannot be written stops nobody.
namespace norvelis {

/// How a run has ended.
enum class RunResult { Ok, Invalid, Missing, Failed };
std::string_view NameOf(RunResult result);  ///< "ok", "invalid", "missing", "failed"

struct RunEnd {
    RunResult result = RunResult::Failed;
    std::size_t records = 0, sets = 0, drawings = 0;
    double seconds = 0;
    std::string words;  ///< Why it is not ok; else what the drawing lacks, or the folder that it is in.
};

void WriteBegin(AppState& app, const Job& job);
void WriteEnd(AppState& app, const Job& job, const RunEnd& end);

/// One run, as the log tells it. Moments are texts as they are in the log.
struct RunHistory {
    std::string begin;
    std::string scheduleid, name, report;
    std::string due;
    long secondsLate = 0;
    std::string end;              ///< Empty without an end.
    std::optional<RunEnd> ended;  ///< Nothing for a run that was interrupted, or that still goes on.
};

/// Every run of the log, of the former one first. RuntimeFailure when a log is there and cannot be read.
std::vector<RunHistory> ReadHistory(const AppState& app);

/// Removes the history: the log is empty afterwards and the former one is gone. False when the disk refuses.
bool ClearAuditLog(const AppState& app);

}  // namespace norvelis
