#include "sqlconv/sql_state.h"

#include <system_error>

#include "sqlconv/diagnostics.h"

namespace norvelis {

void InBackground(const SqlState& sql, const std::function<void()>& calls) {
    sql.app.host.RunInBackground([&calls](const std::stop_token&) { calls(); });
}

void ConnectSql(SqlState& sql, std::string_view dsn, int timeout) {
    const ConnectRequest request{std::string(dsn), {}, {}, timeout};
    InBackground(sql, [&] { sql.gSqlConnection = sql.connector.Connect(request, sql.cancellation); });
    sql.onCancel.emplace(sql.cancellation, [&sql] { sql.gSqlConnection->Cancel(); });
    sql.gSqlConnected = true;
}

void DisconnectSql(SqlState& sql) {
    sql.onCancel.reset();
    sql.gSqlConnected = false;
    if (!sql.gSqlConnection) return;
    const auto close = [&sql] {
        sql.gSqlRecordset.reset();
        sql.gSqlConnection.reset();
    };
    try {
        InBackground(sql, close);
    } catch (const std::system_error&) {
        close();  // The machine has no thread to spare.
    }
}

SqlResult& ExecuteSql(SqlState& sql, std::string_view statement, unsigned long mostRows) {
    sql.gSqlRecordset.reset();
    ThrowIfCanceled(sql.cancellation);
    if (!sql.gSqlConnection) throw SqlFailure(0, "There is no connection to a SQL server");
    return sql.gSqlRecordset.emplace(sql.gSqlConnection->Execute(statement, mostRows));
}

}  // namespace norvelis
