#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "core/store_wait.h"
#include "runs/studio.h"
#include "scheduler/audit_log.h"
#include "scheduler/jobs.h"
#include "store/connection.h"

namespace norvelis::bench {

/// Kills a runner at random moments; what it leaves is sound each time, and the next one does the job.
void KillRuns(int times) {
    const Studio studio;
    const std::int64_t id = studio.Book("night", studio.Larger());
    const auto begin = std::chrono::steady_clock::now();
    Require(studio.Run({"schedule", "run", "--once"}) == 0, "a run in peace does not end ok");
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - begin;

    std::mt19937 random(1);
    std::uniform_real_distribution<double> moment(0, 1.1 * whole.count());
    int killed = 0, wasDue = 0;
    for (int i = 0; i < times; ++i) {
        RunAgain(*Connection::OpenFile(studio.Store()), id);
        const pid_t runner = studio.Start({"schedule", "run", "--once"});
        std::this_thread::sleep_for(std::chrono::duration<double>(moment(random)));
        kill(runner, SIGKILL);
        killed += WaitFor(runner) == -1;
        studio.RequireSound();
        wasDue += FindJob(*Connection::OpenFile(studio.Store()), id)->processed ? 0 : 1;
    }
    RunAgain(*Connection::OpenFile(studio.Store()), id);
    Require(studio.Run({"schedule", "run", "--once"}) == 0, "the run after the kills does not end ok");
    studio.RequireSound();
    const OwnProgram program(studio);
    int interrupted = 0;
    for (const RunHistory& run : ReadHistory(program.app)) interrupted += run.ended ? 0 : 1;
    fmt::print(
        "killed {} of {} runs ({:.2f} s each): {} rows stayed due, {} runs are interrupted in the log; "
        "stores and drawings sound each time\n",
        killed, times, whole.count(), wasDue, interrupted);
}

/// One process extracts again and again, another one copies the store.
void CopyWhileExtracting(int copies) {
    const Studio studio;
    const pid_t own = getpid(), extracting = fork();
    if (extracting == 0) {
        while (getppid() == own) studio.Run({"extract", studio.Larger()});
        _exit(0);
    }
    OwnProgram program(studio);
    double longest = 0;
    for (int i = 0; i < copies; ++i) {
        const std::string copy = studio.App() + "/copy.mdb";
        const auto begin = std::chrono::steady_clock::now();
        WaitForStore(program.host, [&] { program.app.gConnection->CopyTo(copy); });
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        longest = std::max(longest, time.count());
        const auto store = Connection::OpenFile(copy);
        Require(store->Select("PRAGMA integrity_check").Text("integrity_check") == "ok",
                "a copy is not sound");
        const long records = store->Count("Select count(*) FROM Record_Details");
        Require(records == 0 || records == 200, fmt::format("a copy has {} records", records));
    }
    kill(extracting, SIGTERM);
    WaitFor(extracting);
    fmt::print("{} copies of a store that is extracted into: all sound, the longest wait {:.2f} s\n", copies,
               longest);
}

}  // namespace norvelis::bench
