#include <fcntl.h>
#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "core/paths.h"
#include "report_generator.h"
#include "temporary_folder.h"

// How long the desktop program takes from its call to the end of its start, when its first screen stands
// filled, next to the command line program that opens the same store and reads one setting.
namespace norvelis {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kRuns = 9;

pid_t Start(std::vector<std::string> command) {
    const pid_t child = fork();
    if (child != 0) return child;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    std::vector<char*> arguments;
    for (std::string& argument : command) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
    _exit(127);
}

void WaitFor(pid_t child) {
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0) throw std::runtime_error("a program failed");
}

/// An application folder of its own with a schema of so many records.
class Installation {
  public:
    explicit Installation(int records) {
        for (const char* part :
             {"norvelis", "norvelis-cli", "Database", "INI", "Skins", "Bitmaps", "reportfiles"})
            fs::copy(fs::path(NORVELIS_APP) / part, folder_.Path(part), fs::copy_options::recursive);
        fs::create_directories(folder_.Path("visio files"));
        const std::string report = folder_.Path("report");
        WriteFile(report, GenerateSchemaReport(std::max(1, records), records, 30, 1));
        WaitFor(Start({Cli(), "extract", report}));
        WaitFor(Start({Cli(), "setting", "visiolocation", folder_.Path("visio files/")}));
    }

    double StartSeconds() {
        DeleteFile(Log());
        const auto begin = Clock::now();
        const pid_t child = Start({folder_.Path("norvelis")});
        while (!FileExists(Log()) || ReadFile(Log()).find("*END*") == std::string::npos)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        const std::chrono::duration<double> time = Clock::now() - begin;
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        return time.count();
    }

    double ReadSettingSeconds() {
        const auto begin = Clock::now();
        WaitFor(Start({Cli(), "setting", "ReportLocation"}));
        return std::chrono::duration<double>(Clock::now() - begin).count();
    }

  private:
    std::string Cli() const { return folder_.Path("norvelis-cli"); }
    std::string Log() const { return folder_.Path("INI/ProcessLog.Txt"); }

    TemporaryFolder folder_;
};

template <typename Run>
double Median(const Run& run) {
    std::vector<double> times;
    for (int i = 0; i < kRuns; ++i) times.push_back(run());
    std::nth_element(times.begin(), times.begin() + kRuns / 2, times.end());
    return times[kRuns / 2];
}

}  // namespace
}  // namespace norvelis

int main() {
    using namespace norvelis;
    fmt::print("| records | start s | opening the store s | ratio |\n|---|---|---|---|\n");
    for (const int records : {1, 1000}) {
        Installation installation(records);
        const double start = Median([&] { return installation.StartSeconds(); });
        const double open = Median([&] { return installation.ReadSettingSeconds(); });
        fmt::print("| {:7} | {:7.3f} | {:19.3f} | {:5.2f} |\n", records, start, open, start / open);
    }
}
