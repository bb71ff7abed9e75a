#include <fmt/format.h>
#include <unistd.h>

#include <chrono>
#include <map>
#include <set>
#include <thread>

#include "base/paths.h"
#include "base/text.h"
#include "commands/run_job.h"
#include "core/places.h"
#include "runs/studio.h"
#include "scheduler/store_queue.h"
#include "scheduler/tick_machine.h"

namespace norvelis::bench {

namespace {

/// The engine of the desktop program in a process of its own, whose ticks follow one another without a wait.
/// Ends when nothing is due; the exit status says whether it was never stopped by a failure.
int TickUntilDone(const Studio& studio) {
    OwnProgram program(studio);
    StoreQueue jobs(program.app);
    TickMachine::Surroundings surroundings;
    surroundings.run = [&](const Job& job) { commands::RunDueJob(program.app, *program.engine, jobs, job); };
    TickMachine machine(jobs, program.clock, std::move(surroundings));
    machine.Start();
    while (machine.IsStarted() && !DueJobs(*program.app.gConnection, program.clock.Now()).empty()) {
        machine.Tick();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return machine.IsStarted() ? 0 : 1;
}

/// Reads the log line by line, as it was written: a folder has one run at a time, a row runs once.
void RequireOneAtATime(const Studio& studio, int rows) {
    const std::string log = ReadFile(NativePath(studio.App() + std::string(places::kAuditLog)));
    std::set<std::string> running;
    std::map<std::string, int> ends;
    std::size_t begin = 0;
    for (auto end = log.find('\n'); end != std::string::npos; begin = end + 1, end = log.find('\n', begin)) {
        const std::string line = log.substr(begin, end - begin);
        const auto part = [&line](int number) {
            std::size_t from = 0;
            for (int i = 0; i < number; ++i) from = line.find(" ---- ", from) + 6;
            return line.substr(from, line.find(" ---- ", from) - from);
        };
        if (part(0).ends_with("begin")) {
            Require(running.insert(LowerCase(part(2))).second, "two runs in one folder: " + line);
        } else {
            running.erase(LowerCase(part(2)));
            Require(part(3) == "ok", line);
            Require(++ends[part(1)] == 1, "run twice: " + line);
        }
    }
    Require(running.empty() && static_cast<int>(ends.size()) == rows, "not every row was run");
}

}  // namespace

/// Two runners and a desktop's engine on one store.
void RunTogether(int rows) {
    constexpr int kFolders = 7;
    const Studio studio;
    for (int i = 0; i < rows; ++i)
        studio.Book((i % 2 == 0 ? "job" : "JOB") + std::to_string(i % kFolders), studio.Sample());
    const pid_t desktop = fork();
    if (desktop == 0) _exit(TickUntilDone(studio));
    const pid_t first = studio.Start({"schedule", "run", "--once"});
    const pid_t second = studio.Start({"schedule", "run", "--once"});
    for (const pid_t process : {first, second, desktop})
        Require(WaitFor(process) == 0, "a runner has failed");
    RequireOneAtATime(studio, rows);
    studio.RequireSound();
    fmt::print(
        "{} rows in {} folders by two runners and a desktop's engine: each run once, one at a time in a "
        "folder, stores and drawings sound\n",
        rows, kFolders);
}

}  // namespace norvelis::bench
