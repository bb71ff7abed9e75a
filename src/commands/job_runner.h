#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "commands/run_job.h"
#include "scheduler/store_queue.h"

namespace norvelis::commands {

struct RunnerOptions {
    bool once = false;              ///< Ends when nothing is due, instead of looking again.
    std::optional<DateTime> until;  ///< Takes no job from then on.
    bool keepGoing = false;         ///< A job that fails is passed over from then on and stops nothing.
    /// A job did not end ok.
    std::function<void(const Job& job, const RunEnd& end)> onFailure = [](const Job&, const RunEnd&) {};
};

/// Runs due jobs without a screen, one after the other without a rest. It looks for jobs at once, and every
/// six seconds while none is due.
class JobRunner {
  public:
    /// Waits so long; false, at once, when the runner is to end.
    using Wait = std::function<bool(std::chrono::milliseconds time)>;

    JobRunner(AppState& app, engine::DrawingEngine& engine, RunnerOptions options, Wait wait);

    /// Returns when the runner is to end: by its options, by `wait`, or because a job failed. What the person
    /// cancels (Canceled) and a store that fails between two jobs go through.
    void Run();

    bool AllOk() const { return allOk_; }  ///< Every job taken has ended ok.

  private:
    std::optional<Job> TakeJob();
    bool RunOne(const Job& job);
    std::chrono::milliseconds TimeToNextLook() const;

    AppState& app_;
    engine::DrawingEngine& engine_;
    const RunnerOptions options_;
    const Wait wait_;
    StoreQueue jobs_{app_};
    std::optional<std::int64_t> blockedBy_;  ///< The row without a report that the log has named.
    bool allOk_ = true;
};

}  // namespace norvelis::commands
