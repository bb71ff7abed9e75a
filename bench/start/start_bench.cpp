#include <fcntl.h>
#include <fmt/format.h>
#include <sys/resource.h>
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

#include "base/paths.h"
#include "testing/report_generator.h"
#include "testing/temporary_folder.h"

// How long the desktop program takes from its call to the last step of its start, when its first screen
// is filled, next to the command line program that opens the same store and reads one setting. On a
// machine with other work to do the time of the processor says more: all that the program uses until it
// rests, its first painting too.
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

    struct StartTimes {
        double seconds, processorSeconds;
    };
    StartTimes TimeStart() {
        DeleteFile(Log());
        const auto begin = Clock::now();
        const pid_t child = Start({folder_.Path("norvelis")});
        while (!Started()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
        const std::chrono::duration<double> time = Clock::now() - begin;
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        kill(child, SIGKILL);
        rusage used{};
        wait4(child, nullptr, 0, &used);
        const auto seconds = [](const timeval& part) {
            return static_cast<double>(part.tv_sec) + static_cast<double>(part.tv_usec) / 1e6;
        };
        return {time.count(), seconds(used.ru_utime) + seconds(used.ru_stime)};
    }

    double ReadSettingSeconds() {
        const auto begin = Clock::now();
        WaitFor(Start({Cli(), "setting", "ReportLocation"}));
        return std::chrono::duration<double>(Clock::now() - begin).count();
    }

  private:
    std::string Cli() const { return folder_.Path("norvelis-cli"); }
    std::string Log() const { return folder_.Path("INI/ProcessLog.Txt"); }
    /// The check of the drawing folder is the last step, behind the end of the log's block.
    bool Started() const {
        if (!FileExists(Log())) return false;
        const std::string log = ReadFile(Log());
        const auto end = log.find("*END*");
        return end != std::string::npos && log.find("visio location.....", end) != std::string::npos;
    }

    TemporaryFolder folder_;
};

double Median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

}  // namespace
}  // namespace norvelis

int main() {
    using namespace norvelis;
    fmt::print("| records | start s | processor s | opening the store s | ratio |\n|--:|--:|--:|--:|--:|\n");
    for (const int records : {1, 1000}) {
        Installation installation(records);
        std::vector<double> start, processor, open;
        for (int i = 0; i < kRuns; ++i) {
            const auto times = installation.TimeStart();
            start.push_back(times.seconds);
            processor.push_back(times.processorSeconds);
            open.push_back(installation.ReadSettingSeconds());
        }
        fmt::print("| {} | {:.3f} | {:.3f} | {:.3f} | {:.2f} |\n", records, Median(start), Median(processor),
                   Median(open), Median(start) / Median(open));
    }
}
