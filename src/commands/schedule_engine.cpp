#include "commands/schedule_engine.h"

#include <exception>
#include <utility>

namespace norvelis::commands {

ScheduleEngine::ScheduleEngine(AppState& app, engine::DrawingEngine& engine, EngineScreen screen)
    : app_(app), engine_(engine), screen_(std::move(screen)) {}

void ScheduleEngine::Tick() {
    if (!screen_.isBusy()) machine_.Tick();
}

bool ScheduleEngine::AskToClose() {
    if (!IsStarted()) return true;
    const Message question{
        "Schedules are running. Exit Anyway?", {}, Buttons::YesNo, Icon::Question, Answer::Ok};
    if (app_.host.MessageBox(question) != Answer::Yes) return false;
    Stop();
    return true;
}

TickMachine::Surroundings ScheduleEngine::Surroundings() {
    TickMachine::Surroundings result;
    result.run = [this](const Job& job) { Run(job); };
    result.serveEvents = [this] { app_.host.Yield(); };
    result.jobsChanged = screen_.jobsChanged;
    result.stateChanged = screen_.stateChanged;
    result.failed = [this](const std::string&) {
        app_.host.MessageBox("An error was found. Terminating Schedule runs");
    };
    return result;
}

// A failure of a long command would end the program; that of a run stops the engine alone.
void ScheduleEngine::Run(const Job& job) {
    if (HasNoReport(job)) return;
    bool hasEnded = false;
    std::exception_ptr failure;
    screen_.runLong("The scheduled run of " + job.name, [&] {
        try {
            const RunEnd end = RunDueJob(app_, engine_, jobs_, job);
            if (end.result != RunResult::Ok) screen_.notify(job.name + ": " + end.words);
        } catch (const std::exception& exception) {
            failure = std::current_exception();
            screen_.notify(job.name + ": " + FailureWords(exception));
        }
        hasEnded = true;
    });
    if (failure) std::rethrow_exception(failure);
    if (!hasEnded) throw Canceled();
}

}  // namespace norvelis::commands
