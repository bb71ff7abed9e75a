#pragma once

#include <sqlcipher/sqlite3.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "store/connection.h"
#include "store/statement_text.h"

// The engine's side of Connection: prepared statements, kept by their text. Seen by the store's own files
// only.
namespace norvelis {

struct StatementFinalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementPointer = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;

/// The one text for a refusal of the engine: which store, and why.
[[noreturn]] void ThrowStoreFailure(sqlite3* database, const std::string& path);

struct Connection::Statements {
    std::unordered_map<std::string, StatementPointer> prepared;
    std::unordered_map<std::string, StatementText> translated;
    std::unordered_map<std::string, std::vector<std::string>> columns;

    static sqlite3* DatabaseOf(Connection& connection);
    static sqlite3_stmt* Prepare(Connection& connection, const std::string& sql);
    static const StatementText& TextOf(Connection& connection, std::string_view classic);
};

/// One run of a prepared statement: bound, stepped, and reset when the scope is left.
class Run {
  public:
    Run(Connection& connection, sqlite3_stmt* statement);
    ~Run() { sqlite3_reset(statement_); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    void Bind(int position, std::optional<std::string_view> value);
    void Bind(int position, std::int64_t value) { sqlite3_bind_int64(statement_, position, value); }
    /// Values of comparisons: trailing blanks do not count.
    void BindAll(std::initializer_list<std::string_view> values);
    /// True for a row, false at the end.
    bool Step();
    std::optional<std::string> Column(int index) const;
    std::int64_t Integer(int index) const { return sqlite3_column_int64(statement_, index); }

  private:
    Connection& connection_;
    sqlite3_stmt* statement_;
};

}  // namespace norvelis
