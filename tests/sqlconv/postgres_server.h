#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

#include "base/paths.h"
#include "sqlconv/server_folder.h"

namespace norvelis {

/// A PostgreSQL server of the test's own: its folder, its socket, no port, and no passwords unless asked for.
class PostgresServer {
  public:
    /// Throws with the server's words when it does not start. With a password every login needs it.
    explicit PostgresServer(const std::string& password = {}) {
        if (!password.empty()) WriteFile(Folder() + "/password", password + "\n");
        Run("initdb -D " + Folder() + "/data -U tester --no-sync -E UTF8 --locale=C " +
            (password.empty() ? "-A trust" : "-A scram-sha-256 --pwfile=" + Folder() + "/password"));
        Run("pg_ctl -D " + Folder() + "/data -w -l " + Folder() + "/log -o \"-k " + Folder() +
            " -c listen_addresses='' -c fsync=off\" start");
        running_ = true;
    }
    ~PostgresServer() {
        try {
            Stop();
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "%s\n", failure.what());
        }
    }
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// The server goes away without a word to its clients.
    void Stop() {
        if (running_) Run("pg_ctl -D " + Folder() + "/data -m immediate -w stop");
        running_ = false;
    }

    /// The keys of an odbc.ini entry.
    std::string Keys() const {
        return "Servername=" + Folder() + "\nPort=5432\nDatabase=postgres\nUserName=tester\n";
    }

    /// Where its socket is: what its own programs take as host.
    const std::string& Folder() const { return folder_.Path(); }

  private:
    void Run(const std::string& command) const {
        folder_.Run(std::string(POSTGRES_PROGRAMS) + "/" + command);
    }

    ServerFolder folder_;
    bool running_ = false;
};

}  // namespace norvelis
