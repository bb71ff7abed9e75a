#include "sqlconv/sql_connection.h"

#include <sql.h>
#include <sqlext.h>

#include <cstdint>
#include <thread>

#include "base/text.h"
#include "sqlconv/connection_text.h"
#include "sqlconv/diagnostics.h"
#include "sqlconv/streaming.h"

namespace norvelis {

namespace {

constexpr std::size_t kLongestText = 32000;

SQLPOINTER Number(std::uintptr_t number) {
    return reinterpret_cast<SQLPOINTER>(number);
}

SQLCHAR* Characters(std::string& text) {
    return reinterpret_cast<SQLCHAR*>(text.data());
}

ConnectionText TextOf(const ConnectRequest& request) {
    ConnectionText text(request.text);
    AskToStream(text);
    if (!Trim(request.username).empty()) text.Set("UID", request.username);
    if (!Trim(request.password).empty()) text.Set("PWD", request.password);
    return text;
}

/// The diagnostics of a failed connect; a driver that repeats the connection text gives no password away.
std::vector<Diagnostic> WithoutPassword(std::vector<Diagnostic> diagnostics, const ConnectionText& text) {
    for (const char* key : {"PWD", "PASSWORD"}) {
        const std::string password = text.Value(key);
        if (password.empty()) continue;
        for (auto& [state, native, message] : diagnostics) {
            for (std::size_t at = 0; (at = message.find(password, at)) != std::string::npos; at += 3)
                message.replace(at, password.size(), "***");
        }
    }
    return diagnostics;
}

}  // namespace

SqlConnection::SqlConnection(const ConnectRequest& request)
    : handle_(std::make_shared<ConnectionHandle>()), timeout_(request.timeout) {
    if (Trim(request.text).empty()) throw SqlFailure(0, "No data source is named");
    // A driver that has no timeouts connects without them.
    if (const auto seconds = static_cast<std::uintptr_t>(request.timeout); seconds > 0) {
        SQLSetConnectAttr(handle_->Get(), SQL_ATTR_LOGIN_TIMEOUT, Number(seconds), SQL_IS_UINTEGER);
        SQLSetConnectAttr(handle_->Get(), SQL_ATTR_CONNECTION_TIMEOUT, Number(seconds), SQL_IS_UINTEGER);
    }
    const ConnectionText text = TextOf(request);
    std::string written = text.Text();
    if (written.size() > kLongestText) throw SqlFailure(0, "The connection text is too long");
    SQLCHAR completed[1024];
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLDriverConnect(handle_->Get(), nullptr, Characters(written),
                                              static_cast<SQLSMALLINT>(written.size()), completed,
                                              sizeof completed, &length, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result))
        throw SqlFailure(WithoutPassword(DiagnosticsOf(SQL_HANDLE_DBC, handle_->Get()), text));
}

std::unique_ptr<StatementHandle> SqlConnection::NewStatement(unsigned long mostRows) {
    auto statement = std::make_unique<StatementHandle>(handle_);
    if (timeout_ > 0)
        SQLSetStmtAttr(statement->Get(), SQL_ATTR_QUERY_TIMEOUT,
                       Number(static_cast<std::uintptr_t>(timeout_)), SQL_IS_UINTEGER);
    if (mostRows > 0) SQLSetStmtAttr(statement->Get(), SQL_ATTR_MAX_ROWS, Number(mostRows), SQL_IS_UINTEGER);
    return statement;
}

SqlResult SqlConnection::Execute(std::string_view statement, unsigned long mostRows) {
    auto handle = NewStatement(mostRows);
    std::string text(statement);
    const SQLRETURN result =
        SQLExecDirect(handle->Get(), Characters(text), static_cast<SQLINTEGER>(text.size()));
    // A statement that changed no row succeeded all the same.
    if (result != SQL_NO_DATA) handle->Check(result);
    return SqlResult(std::move(handle));
}

SqlResult SqlConnection::Tables() {
    auto handle = NewStatement(0);
    // Without a catalogue some servers list their own tables too.
    std::string catalogue = CurrentCatalogue(), type = "TABLE";
    handle->Check(SQLTables(handle->Get(), catalogue.empty() ? nullptr : Characters(catalogue),
                            static_cast<SQLSMALLINT>(catalogue.size()), nullptr, 0, nullptr, 0,
                            Characters(type), static_cast<SQLSMALLINT>(type.size())));
    return SqlResult(std::move(handle));
}

// Some drivers ask the server by a connection of its own, which may take its time.
void SqlConnection::Cancel() {
    std::thread([handle = handle_] { handle->Cancel(); }).detach();
}

std::string SqlConnection::CurrentCatalogue() const {
    char name[1024] = {};
    SQLINTEGER length = 0;
    if (!SQL_SUCCEEDED(
            SQLGetConnectAttr(handle_->Get(), SQL_ATTR_CURRENT_CATALOG, name, sizeof name, &length)))
        return {};
    return name;
}

std::string SqlConnection::Information(unsigned short kind) const {
    char text[256] = {};
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetInfo(handle_->Get(), kind, text, sizeof text, &length))) return {};
    return std::string(Trim(text));
}

std::string SqlConnection::ServerName() const {
    return Information(SQL_DBMS_NAME);
}

std::string SqlConnection::QuoteCharacter() const {
    return Information(SQL_IDENTIFIER_QUOTE_CHAR);
}

}  // namespace norvelis
