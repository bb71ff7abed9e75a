#pragma once

#include <chrono>
#include <string>

#include "core/console_host.h"

namespace norvelis::cli {

/// The Host of a program that runs until SIGTERM or SIGINT ends it. The signals are taken where
/// it waits and at turns of the event loop, at which they cancel the running command. One at a time.
class RunnerHost : public ConsoleHost {
  public:
    RunnerHost();

    /// Waits so long; false, at once, when the program is to end.
    bool Wait(std::chrono::milliseconds time);

    /// Runs a command of the shell that reads `input`, and waits for its end, unless the program is to end.
    void RunCommand(const std::string& command, const std::string& input);

  private:
    void Turn() override;

    bool isToEnd_ = false;
    std::chrono::steady_clock::time_point nextLook_{};
};

}  // namespace norvelis::cli
