#include "store/connection.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "store/database.h"
#include "store/statement_run.h"
#include "store/store_failure.h"
#include "store/tables.h"

namespace norvelis {

namespace {

constexpr std::string_view kPassword = "2468024680";

std::string PartOf(std::string_view connectionString, std::string_view key) {
    std::size_t begin = 0;
    while (begin < connectionString.size()) {
        const std::size_t end = std::min(connectionString.find(';', begin), connectionString.size());
        const std::string_view part = connectionString.substr(begin, end - begin);
        const auto equals = part.find('=');
        if (equals != std::string_view::npos && EqualIgnoringCase(Trim(part.substr(0, equals)), key)) {
            return std::string(Trim(part.substr(equals + 1)));
        }
        begin = end + 1;
    }
    return {};
}

std::string TablesScript() {
    std::string script = "BEGIN;";
    for (const auto& table : AllTables()) script += CreationScript(table);
    return script + "COMMIT;";
}

void RequireTables(Connection& connection) {
    for (const auto& table : AllTables()) {
        if (connection.Count(
                "Select count(*) FROM sqlite_master where type = 'table' and name = ? collate nocase",
                {table.name}) == 0)
            throw UnusableStore(connection.Path() + ": no dictionary store, it lacks the table " +
                                std::string(table.name));
    }
}

}  // namespace

std::string ConnectionString(std::string_view path) {
    return "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + std::string(path) +
           ";Jet OLEDB:Database password=" + std::string(kPassword);
}

Connection::Connection(std::shared_ptr<Database> database) : database_(std::move(database)) {}

std::shared_ptr<Connection> Connection::Open(std::string_view connectionString) {
    return Open(Resolve(PartOf(connectionString, "Data Source")),
                PartOf(connectionString, "Jet OLEDB:Database password"));
}

std::shared_ptr<Connection> Connection::OpenFile(std::string_view path) {
    return Open(Resolve(path), std::string(kPassword));
}

std::shared_ptr<Connection> Connection::Open(const std::string& path, const std::string& password) {
    if (!FileExists(path)) throw UnusableStore(path + ": the file does not exist");
    auto database = std::make_shared<Database>(path, password, false);
    database->RunScript(
        "PRAGMA temp_store = MEMORY; PRAGMA secure_delete = OFF; SELECT count(*) FROM sqlite_master;");
    std::shared_ptr<Connection> connection(new Connection(std::move(database)));
    connection->SetPageCache(kBrowsingCache);
    RequireTables(*connection);
    return connection;
}

void Connection::CreateStore(const std::string& path) {
    WriteFileThrough(path, [&path](const std::string& temporary) {
        DeleteFile(temporary);
        DeleteFile(path + "-journal");  // Of a store that was here: it would be played back into this one.
        Database(temporary, std::string(kPassword), true).RunScript(TablesScript());
    });
}

std::shared_ptr<Connection> Connection::WithoutMemory() {
    auto database = std::make_shared<Database>(":memory:", std::string(kPassword), true);
    database->RunScript(TablesScript());
    for (const auto& table : AllTables()) {
        const std::string name(table.name);
        database->RunScript("CREATE TRIGGER forget_" + name + " BEFORE INSERT ON " + name +
                            " BEGIN SELECT RAISE(IGNORE); END");
    }
    return std::shared_ptr<Connection>(new Connection(std::move(database)));
}

Connection::~Connection() = default;

void Connection::Close() {
    database_->Close();
}

bool Connection::IsOpen() const {
    return database_->IsOpen();
}

const std::string& Connection::Path() const {
    return database_->Path();
}

void Connection::CopyTo(const std::string& path) {
    try {
        database_->CopyTo(path);
    } catch (const RuntimeFailure&) {
        DeleteFile(path);
        throw;
    }
}

void Connection::SetPageCache(int kilobytes) {
    if (!IsOpen()) return;
    try {
        // Negative numbers are kilobytes.
        database_->RunScript("PRAGMA cache_size = -" + std::to_string(kilobytes));
    } catch (const RuntimeFailure&) {
        // A store that fails keeps the memory that it has.
    }
}

void Connection::Execute(std::string_view statement, std::initializer_list<std::string_view> values) {
    StatementRun run(*database_, database_->TextOf(statement).sql);
    run.BindAll(values);
    while (run.Step()) {
    }
}

Recordset Connection::Select(std::string_view statement, std::initializer_list<std::string_view> values) {
    return Recordset(database_, database_->TextOf(statement), values);
}

long Connection::Count(std::string_view statement, std::initializer_list<std::string_view> values) {
    StatementRun run(*database_, database_->TextOf(statement).sql);
    run.BindAll(values);
    return run.Step() ? static_cast<long>(run.Integer(0)) : 0;
}

}  // namespace norvelis
