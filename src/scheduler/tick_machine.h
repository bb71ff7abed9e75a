#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/dates.h"
#include "scheduler/job_queue.h"

namespace norvelis {

/// Starts due jobs at its ticks, one job at a tick, and rests between them. It has no timer: whoever drives
/// it calls Tick every kTickMilliseconds, counted from the last Start.
///
/// All in one thread. A run serves the event queue, so ticks and commands may arrive within it: ticks are
/// then lost, Stop lets the run end and starts no further one.
class TickMachine {
  public:
    static constexpr int kTickMilliseconds = 6000;

    /// What the machine tells its surroundings, and what it has others do.
    struct Surroundings {
        std::function<void(const Job& job)> run;  ///< Runs a row and marks it: RunAndMark.
        std::function<void()> serveEvents = [] {};
        std::function<void()> jobsChanged = [] {};   ///< A row was run: lists of jobs are to be read again.
        std::function<void()> stateChanged = [] {};  ///< IsStarted has changed: commands, timer.
        /// A run has failed and the machine is stopped; the words are those of the failure. A run that was
        /// canceled stops it too, without words.
        std::function<void(const std::string& words)> failed = [](const std::string&) {};
    };

    TickMachine(JobQueue& jobs, Clock& clock, Surroundings surroundings);
    TickMachine(const TickMachine&) = delete;
    TickMachine& operator=(const TickMachine&) = delete;

    void Start();            ///< "Start Schedules": only a stopped machine can be started.
    void Stop();             ///< "Stop Schedules": only a started one can be stopped.
    bool IsStarted() const;  ///< Stop is enabled, Start is not.

    /// A failure or a cancellation of what it starts stops the machine and does not go through.
    void Tick();

    /// Ticks since the last run; 16 of them are a rest. Starting and stopping leave it alone.
    std::int16_t PollTicks() const { return pollTicks_; }
    bool SchedulesBusy() const { return schedulesBusy_; }  ///< Stays true after a poll that found nothing.
    std::int64_t Ticks() const { return ticks_; }          ///< Handled while started.

  private:
    void Poll();
    void End();

    JobQueue& jobs_;
    Clock& clock_;
    const Surroundings surroundings_;
    std::int16_t pollTicks_ = 0;
    bool schedulesBusy_ = false;
    bool isStarted_ = false;
    bool isPolling_ = false;
    std::int64_t ticks_ = 0;
};

}  // namespace norvelis
