#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "scheduler/jobs.h"

namespace norvelis {

/// The rows that wait, as who runs them sees them: those of the store, or those of a simulation.
class JobQueue {
  public:
    virtual ~JobQueue() = default;

    /// The first row, in the order of the store, that is due at `now` and that nobody else runs. Until
    /// Release nobody else gets it.
    virtual std::optional<Job> TakeDue(DateTime now) = 0;
    virtual void Release() = 0;

    /// Keeps the run of a row: it is processed, and this is its visiofile. A row that was deleted meanwhile
    /// stays deleted.
    virtual void MarkProcessed(const Job& job, const std::string& visiofile) = 0;
};

/// The end of a claim, whichever way the run is left.
class TakenJob {
  public:
    explicit TakenJob(JobQueue& jobs) : jobs_(jobs) {}
    ~TakenJob() { jobs_.Release(); }
    TakenJob(const TakenJob&) = delete;
    TakenJob& operator=(const TakenJob&) = delete;

  private:
    JobQueue& jobs_;
};

/// Extracts and draws the report of a job, whose name and report are trimmed. It returns when the row may be
/// marked; what it throws leaves the row as it is.
using JobRun = std::function<void(const Job& job)>;

/// One due row: runs it and marks it. A row without a report is neither run nor marked, so that it stays in
/// front of the rows behind it. A RuntimeFailure leaves the row due.
void RunAndMark(JobQueue& jobs, const Job& job, const JobRun& run);

/// True for the row that RunAndMark passes by.
bool HasNoReport(const Job& job);

/// What a row keeps as its drawing: the path of the report with another ending, though the drawings lie in
/// the job's folder. RuntimeFailure 5 for a path of fewer than three characters.
std::string VisioFileOf(std::string_view reportPath);

}  // namespace norvelis
