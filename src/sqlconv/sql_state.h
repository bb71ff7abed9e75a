#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

#include "core/app_state.h"
#include "sqlconv/connector.h"

namespace norvelis {

inline constexpr int kSqlTimeout = 600;  ///< Seconds; what every caller of ConnectSql passes.

/// What the commands over a SQL server share. Owned by the entry point.
struct SqlState {
    explicit SqlState(AppState& state) : app(state) {}
    SqlState(const SqlState&) = delete;
    SqlState& operator=(const SqlState&) = delete;

    AppState& app;
    Connector connector;
    std::unique_ptr<SqlConnection> gSqlConnection;  ///< Made on demand, closed again by the command.
    bool gSqlConnected = false;                     ///< gSqlConnection is open.
    std::string gSqlDsn;                            ///< The data source last chosen.
    std::string gSqlStatement;                      ///< The statement for the list of tables.
    std::optional<SqlResult> gSqlRecordset;         ///< Of the last statement.

    /// Of the command that runs: a stop gives its connect up, cancels its statement and lets no other begin.
    std::stop_token cancellation;
    std::optional<std::stop_callback<std::function<void()>>>
        onCancel;  ///< As long as gSqlConnection is open.
};

/// Runs calls that wait for a server in the background, so that windows stay alive meanwhile. Until they have
/// ended nobody else may touch the connection and its results. What they throw goes through.
void InBackground(const SqlState& sql, const std::function<void()>& calls);

/// Opens gSqlConnection, waiting in the background. SqlFailure with the server's words, or when the command
/// was canceled meanwhile.
void ConnectSql(SqlState& sql, std::string_view dsn, int timeout);

/// Closes and releases gSqlConnection, if any, in the background. Never fails.
void DisconnectSql(SqlState& sql);

/// Executes on gSqlConnection and waits for the server; the result is gSqlRecordset. `mostRows` as in
/// SqlConnection::Execute.
SqlResult& ExecuteSql(SqlState& sql, std::string_view statement, unsigned long mostRows = 0);

/// A connection for the length of a scope: opened when there is none yet, and then closed at its end.
class SqlSession {
  public:
    SqlSession(SqlState& sql, std::string_view dsn) : sql_(sql), opened_(!sql.gSqlConnected) {
        if (opened_) ConnectSql(sql, dsn, kSqlTimeout);
    }
    ~SqlSession() {
        if (opened_) DisconnectSql(sql_);
    }
    SqlSession(const SqlSession&) = delete;
    SqlSession& operator=(const SqlSession&) = delete;

  private:
    SqlState& sql_;
    bool opened_;
};

}  // namespace norvelis
