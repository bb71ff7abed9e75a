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

#include "base/paths.h"

namespace norvelis {

/// A PostgreSQL server of the test's own: its folder, its socket, no port, and no passwords unless asked for.
/// It runs as another user when the test is root, for it refuses root.
class PostgresServer {
  public:
    /// Throws with the server's words when it does not start. With a password every login needs it.
    explicit PostgresServer(const std::string& password = {}) {
        std::string pattern = std::filesystem::temp_directory_path().string() + "/npgXXXXXX";
        folder_ = mkdtemp(pattern.data());
        const bool root = getuid() == 0;
        if (root) {
            const passwd* user = getpwnam("nobody");
            if (chown(folder_.c_str(), user->pw_uid, user->pw_gid) != 0) throw std::runtime_error("chown");
            as_ = "setpriv --reuid=" + std::to_string(user->pw_uid) +
                  " --regid=" + std::to_string(user->pw_gid) + " --clear-groups ";
        }
        if (!password.empty()) WriteFile(folder_ + "/password", password + "\n");
        Run("initdb -D " + folder_ + "/data -U tester --no-sync -E UTF8 --locale=C " +
            (password.empty() ? "-A trust" : "-A scram-sha-256 --pwfile=" + folder_ + "/password"));
        Run("pg_ctl -D " + folder_ + "/data -w -l " + folder_ + "/log -o \"-k " + folder_ +
            " -c listen_addresses='' -c fsync=off\" start");
        running_ = true;
    }
    ~PostgresServer() {
        try {
            Stop();
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "%s\n", failure.what());
        }
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// The server goes away without a word to its clients.
    void Stop() {
        if (running_) Run("pg_ctl -D " + folder_ + "/data -m immediate -w stop");
        running_ = false;
    }

    /// The keys of an odbc.ini entry.
    std::string Keys() const {
        return "Servername=" + folder_ + "\nPort=5432\nDatabase=postgres\nUserName=tester\n";
    }

    /// Where its socket is: what its own programs take as host.
    const std::string& Folder() const { return folder_; }

  private:
    void Run(const std::string& command) const {
        const std::string full = "cd " + folder_ + " && " + as_ + std::string(POSTGRES_PROGRAMS) + "/" +
                                 command + " 2>&1 </dev/null";
        std::FILE* pipe = popen(full.c_str(), "r");
        std::array<char, 4096> buffer{};
        std::string words;
        while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe))
            words.append(buffer.data(), count);
        if (pclose(pipe) != 0)
            throw std::runtime_error("PostgreSQL: " + command.substr(0, command.find(' ')) + ": " + words);
    }

    std::string folder_, as_;
    bool running_ = false;
};

}  // namespace norvelis
