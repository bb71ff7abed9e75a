#include "cli/runner_host.h"

#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <system_error>

namespace norvelis::cli {

namespace {

constexpr std::chrono::milliseconds kBetweenLooks{20};

sigset_t EndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

/// A file without a name that holds the text and is to be read from its beginning; -1 where there is none.
int FileOf(const std::string& text) {
    const int file = memfd_create("input", MFD_CLOEXEC);
    if (file < 0) return file;
    const ssize_t written = write(file, text.data(), text.size());
    if (written == static_cast<ssize_t>(text.size()) && lseek(file, 0, SEEK_SET) == 0) return file;
    close(file);
    return -1;
}

/// Starts the shell with this command and input, with the signals as any program has them.
int Start(const std::string& command, int input, pid_t& process) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    std::string shell = "sh", option = "-c", text = command;
    char* const arguments[] = {shell.data(), option.data(), text.data(), nullptr};
    const int error = posix_spawn(&process, "/bin/sh", &files, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error;
}

}  // namespace

// Kept back, and asked for where it suits.
RunnerHost::RunnerHost() {
    const sigset_t signals = EndSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
}

bool RunnerHost::Wait(std::chrono::milliseconds time) {
    if (isToEnd_) return false;
    const sigset_t signals = EndSignals();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    const std::chrono::nanoseconds rest = time - seconds;
    const timespec limit{static_cast<time_t>(seconds.count()), static_cast<long>(rest.count())};
    isToEnd_ = sigtimedwait(&signals, nullptr, &limit) > 0;
    return !isToEnd_;
}

void RunnerHost::RunCommand(const std::string& command, const std::string& input) {
    constexpr std::chrono::milliseconds kBetweenTests{50};
    const int file = FileOf(input);
    pid_t process = 0;
    const int error = file < 0 ? errno : Start(command, file, process);
    if (file >= 0) close(file);
    if (error != 0) {
        MessageBox("The command \"" + command +
                   "\" cannot be started: " + std::generic_category().message(error));
        return;
    }
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
        if (!Wait(kBetweenTests)) return;
    }
    if (status != 0) MessageBox("The command \"" + command + "\" has failed.");
}

void RunnerHost::Turn() {
    const auto now = std::chrono::steady_clock::now();
    if (now < nextLook_) return;
    nextLook_ = now + kBetweenLooks;
    if (!Wait(std::chrono::milliseconds::zero())) Cancel();
}

}  // namespace norvelis::cli
