#include "store/connection.h"

#include <sqlcipher/sqlite3.h>
#include <unistd.h>

#include <utility>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "store/statements.h"
#include "store/tables.h"

namespace norvelis {

namespace {

constexpr std::string_view kPassword = "2468024680";
constexpr int kBusyMilliseconds = 2000;

struct DatabaseCloser {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using DatabasePointer = std::unique_ptr<sqlite3, DatabaseCloser>;

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

DatabasePointer OpenFile(const std::string& path, const std::string& password, int flags) {
    sqlite3* raw = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &raw, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    DatabasePointer database(raw);
    if (result != SQLITE_OK) ThrowStoreFailure(raw, path);
    sqlite3_busy_timeout(raw, kBusyMilliseconds);
    sqlite3_key(raw, password.data(), static_cast<int>(password.size()));
    return database;
}

void RunScript(sqlite3* database, const std::string& path, const std::string& script) {
    if (sqlite3_exec(database, script.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        ThrowStoreFailure(database, path);
}

// Newer libraries write another file form unless told; stores must move between machines.
void KeepFileForm(sqlite3* database) {
    std::string version;
    sqlite3_exec(
        database, "PRAGMA cipher_version",
        [](void* out, int, char** values, char**) {
            if (values[0] != nullptr) *static_cast<std::string*>(out) = values[0];
            return 0;
        },
        &version, nullptr);
    if (Val(version) >= 4)
        sqlite3_exec(database, "PRAGMA cipher_compatibility = 3", nullptr, nullptr, nullptr);
}

}  // namespace

void ThrowStoreFailure(sqlite3* database, const std::string& path) {
    std::string reason = database != nullptr ? sqlite3_errmsg(database) : "out of memory";
    switch (database != nullptr ? sqlite3_errcode(database) & 0xFF : SQLITE_NOMEM) {
        case SQLITE_NOTADB:
            reason = "wrong password, or the file is no dictionary store";
            break;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            reason = "locked by another program";
            break;
        case SQLITE_READONLY:
            reason = "write-protected";
            break;
        case SQLITE_FULL:
            reason = "the disk is full";
            break;
        case SQLITE_CANTOPEN:
            reason = access(path.c_str(), R_OK) != 0 ? "may not be read" : "its folder may not be written to";
            break;
        case SQLITE_IOERR:
            reason = "the disk refused to read or write it";
            break;
        case SQLITE_CORRUPT:
            reason = "the file is damaged";
            break;
        default:
            break;
    }
    throw RuntimeFailure(FailureNumber::StoreFailure, path + ": " + reason);
}

std::string ConnectionString(std::string_view path) {
    return "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + std::string(path) +
           ";Jet OLEDB:Database password=" + std::string(kPassword);
}

Connection::Connection(sqlite3* database, std::string path)
    : database_(database), path_(std::move(path)), statements_(std::make_unique<Statements>()) {}

std::shared_ptr<Connection> Connection::Open(std::string_view connectionString) {
    const std::string path = Resolve(PartOf(connectionString, "Data Source"));
    if (!FileExists(path))
        throw RuntimeFailure(FailureNumber::StoreFailure, path + ": the file does not exist");
    DatabasePointer database =
        OpenFile(path, PartOf(connectionString, "Jet OLEDB:Database password"), SQLITE_OPEN_READWRITE);
    KeepFileForm(database.get());
    RunScript(database.get(), path,
              "PRAGMA temp_store = MEMORY; PRAGMA secure_delete = OFF; SELECT count(*) FROM sqlite_master;");
    std::shared_ptr<Connection> connection(new Connection(database.release(), path));
    connection->SetPageCache(kBrowsingCache);
    for (const auto& table : AllTables()) {
        if (connection->Count(
                "Select count(*) FROM sqlite_master where type = 'table' and name = ? collate nocase",
                {table.name}) == 0)
            throw RuntimeFailure(
                FailureNumber::StoreFailure,
                path + ": no dictionary store, it lacks the table " + std::string(table.name));
    }
    return connection;
}

void Connection::SetPageCache(int kilobytes) {
    // Negative numbers are kilobytes. A closed or failing store keeps what it has.
    if (database_)
        sqlite3_exec(database_, ("PRAGMA cache_size = -" + std::to_string(kilobytes)).c_str(), nullptr,
                     nullptr, nullptr);
}

void Connection::CreateStore(const std::string& path) {
    WriteFileThrough(path, [&](const std::string& temporary) {
        DeleteFile(temporary);
        const DatabasePointer database =
            OpenFile(temporary, std::string(kPassword), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        KeepFileForm(database.get());
        std::string script = "BEGIN;";
        for (const auto& table : AllTables()) script += CreationScript(table);
        RunScript(database.get(), path, script + "COMMIT;");
    });
}

Connection::~Connection() {
    Close();
}

void Connection::Close() {
    if (database_ == nullptr) return;
    statements_ = std::make_unique<Statements>();
    sqlite3_close_v2(std::exchange(database_, nullptr));
}

void Connection::Execute(std::string_view statement, std::initializer_list<std::string_view> values) {
    Run run(*this, Statements::Prepare(*this, Statements::TextOf(*this, statement).sql));
    run.BindAll(values);
    while (run.Step()) {
    }
}

long Connection::Count(std::string_view statement, std::initializer_list<std::string_view> values) {
    Run run(*this, Statements::Prepare(*this, Statements::TextOf(*this, statement).sql));
    run.BindAll(values);
    return run.Step() ? static_cast<long>(run.Integer(0)) : 0;
}

const std::vector<std::string>& Connection::ColumnsOf(std::string_view table) {
    const auto [entry, fresh] = statements_->columns.try_emplace(LowerCase(table));
    if (fresh) {
        Run run(*this, Statements::Prepare(*this, "PRAGMA table_info(\"" + entry->first + "\")"));
        while (run.Step()) entry->second.push_back(run.Column(1).value_or(""));
    }
    return entry->second;
}

sqlite3* Connection::Statements::DatabaseOf(Connection& connection) {
    return connection.database_;
}

sqlite3_stmt* Connection::Statements::Prepare(Connection& connection, const std::string& sql) {
    if (!connection.IsOpen())
        throw RuntimeFailure(FailureNumber::StoreFailure, connection.path_ + ": the store is closed");
    auto& slot = connection.statements_->prepared[sql];
    if (!slot) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(connection.database_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
            ThrowStoreFailure(connection.database_, connection.path_);
        }
        slot.reset(statement);
    }
    return slot.get();
}

const StatementText& Connection::Statements::TextOf(Connection& connection, std::string_view classic) {
    const auto [entry, fresh] = connection.statements_->translated.try_emplace(std::string(classic));
    if (fresh) entry->second = Translate(classic);
    return entry->second;
}

Run::Run(Connection& connection, sqlite3_stmt* statement) : connection_(connection), statement_(statement) {}

void Run::Bind(int position, std::optional<std::string_view> value) {
    if (value) {
        sqlite3_bind_text(statement_, position, value->empty() ? "" : value->data(),
                          static_cast<int>(value->size()), SQLITE_STATIC);
    } else {
        sqlite3_bind_null(statement_, position);
    }
}

void Run::BindAll(std::initializer_list<std::string_view> values) {
    int position = 0;
    for (const auto value : values) Bind(++position, TrimEnd(value));
}

bool Run::Step() {
    switch (sqlite3_step(statement_)) {
        case SQLITE_ROW:
            return true;
        case SQLITE_DONE:
            return false;
        default:
            ThrowStoreFailure(sqlite3_db_handle(statement_), connection_.Path());
    }
}

std::optional<std::string> Run::Column(int index) const {
    if (sqlite3_column_type(statement_, index) == SQLITE_NULL) return std::nullopt;
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, index));
    return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, index)));
}

Transaction::Transaction(Connection& connection) : connection_(&connection) {
    if (connection_->transactions_ == 0) connection_->Execute("BEGIN IMMEDIATE");
    ++connection_->transactions_;
}

void Transaction::Commit() {
    if (connection_ == nullptr) return;
    Connection& connection = *std::exchange(connection_, nullptr);
    if (--connection.transactions_ > 0 || !connection.IsOpen()) return;
    try {
        connection.Execute("COMMIT");
    } catch (const RuntimeFailure&) {
        // A full disk leaves the transaction open: without this the store would stay locked.
        sqlite3_exec(connection.database_, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

void Transaction::Rollback() {
    if (connection_ == nullptr) return;
    Connection& connection = *std::exchange(connection_, nullptr);
    if (--connection.transactions_ > 0 || !connection.IsOpen()) return;
    // Refused when the engine has gone back by itself, which is as good.
    sqlite3_exec(connection.database_, "ROLLBACK", nullptr, nullptr, nullptr);
}

Transaction::~Transaction() {
    try {
        Commit();
    } catch (const RuntimeFailure&) {
        // The failure that is on its way tells more than this one.
    }
}

Inserter::Inserter(Connection& connection, std::string_view table,
                   std::initializer_list<std::string_view> columns)
    : connection_(&connection) {
    std::string names, marks;
    for (const auto column : columns) {
        names += (names.empty() ? "\"" : ", \"") + std::string(column) + "\"";
        marks += marks.empty() ? "?" : ", ?";
    }
    statement_ = Connection::Statements::Prepare(
        connection, "INSERT INTO " + std::string(table) + " (" + names + ") VALUES (" + marks + ")");
}

void Inserter::Add(std::span<const std::optional<std::string_view>> values) {
    Run run(*connection_, statement_);
    int position = 0;
    for (const auto& value : values) run.Bind(++position, value);
    run.Step();
}

}  // namespace norvelis
