#pragma once

#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace norvelis {

/// Where a server of a test's own lives: its folder, with a name short enough for a socket in it, and the
/// user that it runs as, which is another one when the test is root, for servers refuse root.
class ServerFolder {
  public:
    ServerFolder() {
        std::string pattern = std::filesystem::temp_directory_path().string() + "/nsqXXXXXX";
        path_ = mkdtemp(pattern.data());
        if (getuid() != 0) return;
        const passwd* user = getpwnam("nobody");
        if (chown(path_.c_str(), user->pw_uid, user->pw_gid) != 0) throw std::runtime_error("chown");
        as_ = " --reuid=" + std::to_string(user->pw_uid) + " --regid=" + std::to_string(user->pw_gid) +
              " --clear-groups";
    }
    ~ServerFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ServerFolder(const ServerFolder&) = delete;
    ServerFolder& operator=(const ServerFolder&) = delete;

    const std::string& Path() const { return path_; }

    /// Runs a program to its end; throws with its words when it fails.
    void Run(const std::string& command) const {
        const std::string full = "cd " + path_ + " && " + Start(command) + " 2>&1 </dev/null";
        std::FILE* pipe = popen(full.c_str(), "r");
        std::array<char, 4096> buffer{};
        std::string words;
        while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe))
            words.append(buffer.data(), count);
        if (pclose(pipe) != 0) throw std::runtime_error(command.substr(0, command.find(' ')) + ": " + words);
    }

    /// The process of a program that goes on; it ends with the test, whichever way that ends.
    pid_t StartDaemon(const std::string& command) const {
        const std::string full =
            "exec >" + path_ + "/log 2>&1 </dev/null; exec " + Start(command, " --pdeathsig=KILL");
        const pid_t process = fork();
        if (process == 0) {
            execl("/bin/sh", "sh", "-c", full.c_str(), nullptr);
            _exit(127);
        }
        return process;
    }

  private:
    std::string Start(const std::string& command, const std::string& options = {}) const {
        return as_.empty() && options.empty() ? command : "setpriv" + as_ + options + " " + command;
    }

    std::string path_, as_;
};

}  // namespace norvelis
