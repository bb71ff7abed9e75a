#pragma once

#include <functional>
#include <string>

#include "commands/run_job.h"
#include "scheduler/store_queue.h"
#include "scheduler/tick_machine.h"

namespace norvelis::commands {

/// What the engine of scheduled runs asks of the screen that it lives in.
struct EngineScreen {
    /// Runs the work as the program's long command of this name: one at a time, and a person may cancel it.
    std::function<void(const std::string& name, const std::function<void()>& work)> runLong;
    std::function<bool()> isBusy;                          ///< A person's long command runs.
    std::function<void()> jobsChanged;                     ///< Both trees are to be filled again.
    std::function<void()> stateChanged;                    ///< IsStarted has changed: commands, Timer3.
    std::function<void(const std::string& words)> notify;  ///< Of a run that did not end ok: the tray icon.
};

/// "Start Schedules" and "Stop Schedules": runs due jobs while its screen is open and it is started. The
/// screen calls Tick from Timer3 and does what EngineScreen says; all else is here.
class ScheduleEngine {
  public:
    ScheduleEngine(AppState& app, engine::DrawingEngine& engine, EngineScreen screen);

    void Start() { machine_.Start(); }
    void Stop() { machine_.Stop(); }
    bool IsStarted() const { return machine_.IsStarted(); }

    void Tick();  ///< Lost while a person's long command runs, as one that falls into a run is.

    /// True when the screen may be closed, because the engine is stopped or the person agrees. The engine is
    /// stopped then; a run that goes on is to be canceled by the caller before the screen goes.
    bool AskToClose();

  private:
    TickMachine::Surroundings Surroundings();
    void Run(const Job& job);

    AppState& app_;
    engine::DrawingEngine& engine_;
    const EngineScreen screen_;
    StoreQueue jobs_{app_};
    TickMachine machine_{jobs_, app_.clock, Surroundings()};
};

}  // namespace norvelis::commands
