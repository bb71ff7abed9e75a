#include "sqlconv/server_tables.h"

#include <algorithm>

#include "base/text.h"
#include "core/log.h"
#include "sqlconv/diagnostics.h"
#include "sqlconv/type_numbers.h"

namespace norvelis {

namespace {

std::string Quoted(const std::string& name, const std::string& quote) {
    std::string quoted = quote;
    for (const char c : name) {
        quoted += c;
        if (quote.size() == 1 && c == quote.front()) quoted += c;
    }
    return quoted + quote;
}

std::vector<ServerTable> TablesByStatement(SqlState& sql) {
    sql.gSqlStatement = "SELECT [name] FROM dbo.sysobjects WHERE ";
    sql.gSqlStatement += "[type] IN ('U') ";
    sql.gSqlStatement += "ORDER BY [name]";
    SqlResult& result = ExecuteSql(sql, sql.gSqlStatement);
    std::vector<ServerTable> tables;
    while (const auto* row = result.Next()) {
        ThrowIfCanceled(sql.cancellation);
        const std::string name = row->front().value_or("");
        const std::string shown = UpperCase(name);
        tables.push_back({shown, name, {}, shown});
    }
    sql.gSqlRecordset.reset();
    return tables;
}

std::vector<ServerTable> TablesByDriver(SqlState& sql) {
    constexpr std::size_t kSchema = 1, kName = 2;
    const std::string quote = sql.gSqlConnection->QuoteCharacter();
    SqlResult result = sql.gSqlConnection->Tables();
    std::vector<ServerTable> tables;
    while (const auto* row = result.Next()) {
        ThrowIfCanceled(sql.cancellation);
        const std::string name = row->at(kName).value_or(""), schema = row->at(kSchema).value_or("");
        std::string from = Quoted(name, quote);
        if (!schema.empty()) from.insert(0, Quoted(schema, quote) + ".");
        tables.push_back({UpperCase(name), name, schema, std::move(from)});
    }
    return tables;
}

}  // namespace

std::vector<ServerTable> TablesOf(SqlState& sql, const std::string& dsn) {
    sql.gSqlDsn = dsn;
    const SqlSession session(sql, dsn);
    std::vector<ServerTable> tables;
    try {
        InBackground(sql, [&] { tables = TablesByStatement(sql); });
        return tables;
    } catch (const SqlFailure& refusal) {
        ThrowIfCanceled(sql.cancellation);
        std::string words = refusal.what();
        std::erase(words, '\r');
        std::replace(words.begin(), words.end(), '\n', ' ');  // The log has a line for each entry.
        WriteToProcessLog(sql.app, "Conversion", "Connection", words);
    }
    InBackground(sql, [&] { tables = TablesByDriver(sql); });
    return tables;
}

std::vector<ServerField> FieldsOf(SqlState& sql, const ServerTable& table) {
    const SqlSession session(sql, sql.gSqlDsn);
    std::vector<ServerField> fields;
    InBackground(sql, [&] {
        for (const auto& field : ExecuteSql(sql, "SELECT * FROM " + table.from, 1).Fields()) {
            const int number = TypeNumber(field.type, field.isUnsigned);
            fields.push_back({UpperCase(Trim(field.name)), std::string(TypeText(number)), number});
        }
        sql.gSqlRecordset.reset();
    });
    return fields;
}

std::string FieldsFailureText(const SqlFailure& failure) {
    return "During the process an error occured. err.nu : " + std::to_string(failure.Number()) +
           " err.des : " + failure.what();
}

}  // namespace norvelis
