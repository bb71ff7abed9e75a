#include "commands/job_runner.h"

#include <algorithm>
#include <utility>

#include "core/log.h"

namespace norvelis::commands {

namespace {

constexpr std::chrono::milliseconds kBetweenLooks{6000};

}  // namespace

JobRunner::JobRunner(AppState& app, engine::DrawingEngine& engine, RunnerOptions options, Wait wait)
    : app_(app), engine_(engine), options_(std::move(options)), wait_(std::move(wait)) {}

void JobRunner::Run() {
    while (wait_(std::chrono::milliseconds::zero())) {
        if (options_.until && app_.clock.Now() >= *options_.until) return;
        if (const auto job = TakeJob()) {
            if (!RunOne(*job)) return;
            continue;
        }
        if ((options_.once && !jobs_.LeftOne()) || !wait_(TimeToNextLook())) return;
    }
}

std::optional<Job> JobRunner::TakeJob() {
    auto job = jobs_.TakeDue(app_.clock.Now());
    if (!job || !HasNoReport(*job)) {
        blockedBy_.reset();
        return job;
    }
    if (std::exchange(blockedBy_, job->scheduleid) != job->scheduleid) {
        const std::string words = "Schedule id:" + std::to_string(job->scheduleid) +
                                  " has no report; the jobs behind it wait until it is deleted or changed.";
        WriteToScheduleLog(app_, words);
        app_.host.MessageBox(words);
    }
    return std::nullopt;
}

// False when the runner is to end.
bool JobRunner::RunOne(const Job& job) {
    const bool allWereOk = std::exchange(allOk_, false);  // A run that is canceled has not ended ok.
    RunEnd end;
    bool goOn = true;
    {
        const TakenJob taken(jobs_);
        try {
            end = RunDueJob(app_, engine_, jobs_, job);
        } catch (const std::exception& failure) {
            end.result = RunResult::Failed;
            end.words = FailureWords(failure);
            goOn = options_.keepGoing;
            jobs_.PassOver(job.scheduleid);
        }
    }
    allOk_ = allWereOk && end.result == RunResult::Ok;
    if (end.result != RunResult::Ok) {
        app_.host.MessageBox("Schedule id:" + std::to_string(job.scheduleid) + " " +
                             std::string(NameOf(end.result)) + ": " + end.words);
        options_.onFailure(job, end);
    }
    if (!goOn) app_.host.MessageBox("An error was found. Terminating Schedule runs");
    return goOn;
}

std::chrono::milliseconds JobRunner::TimeToNextLook() const {
    if (!options_.until) return kBetweenLooks;
    constexpr double kMillisecondsPerDay = 86'400'000;
    constexpr double kMost = static_cast<double>(kBetweenLooks.count());
    const double left = (*options_.until - app_.clock.Now()) * kMillisecondsPerDay;
    return std::min(kBetweenLooks,
                    std::chrono::milliseconds(static_cast<long>(std::clamp(left, 0.0, kMost))));
}

}  // namespace norvelis::commands
