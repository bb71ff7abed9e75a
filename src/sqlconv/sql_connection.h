#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "sqlconv/sql_result.h"

namespace norvelis {

struct ConnectRequest {
    std::string text;                ///< Name of a data source, or a connection text with "=" in it.
    std::string username, password;  ///< Blank: the data source holds them.
    int timeout = 0;  ///< Seconds for the login, for an answer and for a statement; 0: no limit.
};

/// One open connection to a server. Every function throws SqlFailure with the server's words. Not for use by
/// two threads, but for Cancel.
class SqlConnection {
  public:
    /// Blocks until the server answers; some drivers do not keep to the timeout.
    explicit SqlConnection(const ConnectRequest& request);

    /// Executes as it is written. `mostRows` is how many rows the server is asked for; 0: all.
    SqlResult Execute(std::string_view statement, unsigned long mostRows = 0);

    /// The person's tables in the connection's own catalogue: catalogue, schema, name and two more columns.
    SqlResult Tables();

    /// Asks the server to leave the statement that runs, whose call then fails. For any thread, which does
    /// not wait for the server.
    void Cancel();

    /// What the server calls itself, such as "PostgreSQL"; empty when it does not say.
    std::string ServerName() const;

    /// What the server encloses names in; empty when it does not say or has none.
    std::string QuoteCharacter() const;

  private:
    std::unique_ptr<StatementHandle> NewStatement(unsigned long mostRows);
    std::string CurrentCatalogue() const;
    std::string Information(unsigned short kind) const;

    std::shared_ptr<ConnectionHandle> handle_;
    int timeout_;
};

}  // namespace norvelis
