#include "sqlconv/sql_state.h"

#include "sqlconv/diagnostics.h"

namespace norvelis {

void ConnectSql(SqlState& sql, std::string_view dsn, int timeout) {
    const ConnectRequest request{std::string(dsn), {}, {}, timeout};
    sql.gSqlConnection = sql.connector.Connect(request, sql.cancellation);
    sql.onCancel.emplace(sql.cancellation, [&sql] { sql.gSqlConnection->Cancel(); });
    sql.gSqlConnected = true;
}

void DisconnectSql(SqlState& sql) {
    sql.onCancel.reset();
    sql.gSqlRecordset.reset();
    sql.gSqlConnection.reset();
    sql.gSqlConnected = false;
}

SqlResult& ExecuteSql(SqlState& sql, std::string_view statement, unsigned long mostRows) {
    sql.gSqlRecordset.reset();
    ThrowIfCanceled(sql.cancellation);
    if (!sql.gSqlConnection) throw SqlFailure(0, "There is no connection to a SQL server");
    return sql.gSqlRecordset.emplace(sql.gSqlConnection->Execute(statement, mostRows));
}

}  // namespace norvelis
