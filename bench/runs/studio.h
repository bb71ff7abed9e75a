#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "core/console_host.h"
#include "engine/drawing_engine.h"
#include "testing/temporary_folder.h"

// What the measurements of scheduled runs share: an application folder with its programs, and what is to be
// true of it whatever happens to a run.
namespace norvelis::bench {

/// A copy of the delivered application folder with an empty store and two reports: the sample, and one of 200
/// records.
class Studio {
  public:
    Studio();

    std::string App() const { return folder_.Path("app"); }
    std::string Store() const { return App() + "/Database/records.mdb"; }
    std::string Sample() const { return App() + "/reportfiles/empschm.text"; }
    std::string Larger() const { return folder_.Path("larger.txt"); }

    /// Starts norvelis-cli, its words thrown away.
    pid_t Start(const std::vector<std::string>& arguments) const;
    /// Starts it and waits for its end: the exit status.
    int Run(const std::vector<std::string>& arguments) const;

    /// A row that has been due for long; its id.
    std::int64_t Book(const std::string& name, const std::string& report) const;

    /// Every store sound, every drawing whole; the first fault ends the measurement.
    void RequireSound() const;

  private:
    TemporaryFolder folder_;
};

/// A program of ours within this process: a state with the store open, and an engine.
struct OwnProgram {
    explicit OwnProgram(const Studio& studio);

    ConsoleHost host;
    SystemClock clock;
    AppState app;
    std::unique_ptr<engine::DrawingEngine> engine;
};

/// Waits for the end of a process: its exit status, -1 when a signal ended it.
int WaitFor(pid_t process);

void Require(bool isTrue, const std::string& what);  ///< Throws when it is not.

void KillRuns(int times);
void RunTogether(int rows);
void CopyWhileExtracting(int copies);
void Soak(int jobs);

}  // namespace norvelis::bench
