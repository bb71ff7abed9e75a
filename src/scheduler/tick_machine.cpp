#include "scheduler/tick_machine.h"

#include <exception>
#include <utility>

#include "core/host.h"

namespace norvelis {

namespace {

constexpr std::int16_t kRestTicks = 16;
constexpr std::int16_t kTicksAfterRun = 1;  // So 15 ticks pass without a poll.

class Flag {
  public:
    explicit Flag(bool& flag) : flag_(flag) { flag_ = true; }
    ~Flag() { flag_ = false; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

  private:
    bool& flag_;
};

}  // namespace

TickMachine::TickMachine(JobQueue& jobs, Clock& clock, Surroundings surroundings)
    : jobs_(jobs), clock_(clock), surroundings_(std::move(surroundings)) {}

bool TickMachine::IsStarted() const {
    return isStarted_;
}

void TickMachine::Start() {
    if (std::exchange(isStarted_, true)) return;
    surroundings_.stateChanged();
}

void TickMachine::Stop() {
    if (!std::exchange(isStarted_, false)) return;
    surroundings_.stateChanged();
}

void TickMachine::Tick() {
    if (!isStarted_ || isPolling_) return;
    ++ticks_;
    if (pollTicks_ < kRestTicks) {
        ++pollTicks_;
        schedulesBusy_ = false;
        return;
    }
    schedulesBusy_ = true;
    const Flag polling(isPolling_);
    try {
        Poll();
    } catch (const std::exception& failure) {
        End();
        surroundings_.failed(failure.what());
    } catch (const Canceled&) {
        End();
    }
}

void TickMachine::Poll() {
    const std::optional<Job> job = jobs_.TakeDue(clock_.Now());
    if (!job) return;
    {
        const TakenJob taken(jobs_);
        surroundings_.serveEvents();
        surroundings_.serveEvents();
        surroundings_.run(*job);
    }
    pollTicks_ = kTicksAfterRun;
    surroundings_.jobsChanged();
    schedulesBusy_ = false;
}

void TickMachine::End() {
    schedulesBusy_ = false;
    Stop();
}

}  // namespace norvelis
