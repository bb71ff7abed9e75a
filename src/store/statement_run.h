#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/database.h"

struct sqlite3_stmt;

namespace norvelis {

/// One run of a prepared statement: bound, stepped, and reset when the scope is left. Bound texts must
/// outlive the run. Seen by the store's own files only.
class StatementRun {
  public:
    StatementRun(const Database& database, sqlite3_stmt* statement)
        : database_(database), statement_(statement) {}
    StatementRun(Database& database, const std::string& sql)
        : StatementRun(database, database.Prepare(sql)) {}
    ~StatementRun();
    StatementRun(const StatementRun&) = delete;
    StatementRun& operator=(const StatementRun&) = delete;

    void Bind(int position, std::optional<std::string_view> value);  ///< Positions count from 1.
    void Bind(int position, std::int64_t value);
    /// Values of comparisons: trailing blanks do not count.
    void BindAll(std::initializer_list<std::string_view> values);
    /// True for a row, false at the end; RuntimeFailure when the engine refuses.
    bool Step();

    std::vector<std::string> ColumnNames() const;
    std::optional<std::string> Column(int index) const;  ///< Of the present row, from 0; nothing for null.
    /// The same with null as empty text; valid until the next step.
    std::string_view Text(int index) const;
    std::int64_t Integer(int index) const;

  private:
    const Database& database_;
    sqlite3_stmt* statement_;
};

}  // namespace norvelis
