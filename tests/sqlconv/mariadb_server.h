#pragma once

#include <sys/wait.h>

#include <csignal>
#include <string>

#include "sqlconv/server_folder.h"

namespace norvelis {

/// A MariaDB server of the test's own: its folder, its socket, no port, no passwords.
class MariadbServer {
  public:
    /// Throws with the server's words when it does not start.
    MariadbServer() {
        const std::string data = " --datadir=" + folder_.Path() + "/data",
                          socket = " --socket=" + folder_.Path() + "/s",
                          temporary = " --tmpdir=" + folder_.Path();
        folder_.Run("mariadb-install-db --no-defaults" + data + temporary +
                    " --auth-root-authentication-method=normal --skip-test-db");
        process_ = folder_.StartDaemon("mariadbd --no-defaults" + data + socket + temporary +
                                       " --skip-networking --skip-name-resolve --innodb-buffer-pool-size=32M"
                                       " --innodb-flush-log-at-trx-commit=0");
        folder_.Run("mariadb-admin --no-defaults --wait=30" + socket + " -uroot ping");
        folder_.Run("mariadb-admin --no-defaults" + socket + " -uroot create tests");
    }
    ~MariadbServer() {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    MariadbServer(const MariadbServer&) = delete;
    MariadbServer& operator=(const MariadbServer&) = delete;

    /// Where its socket is, as "s".
    const std::string& Folder() const { return folder_.Path(); }

    /// The keys of an odbc.ini entry.
    std::string Keys() const { return "SOCKET=" + folder_.Path() + "/s\nDatabase=tests\nUID=root\n"; }

  private:
    ServerFolder folder_;
    pid_t process_ = 0;
};

}  // namespace norvelis
