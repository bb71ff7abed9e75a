#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "store/connection.h"

namespace norvelis {

class StatementRun;  // store/statement_run.h

/// The rows of a statement one after the other, each seen once: nothing is kept of a row that was passed, so
/// reading very many takes a part of the time of a Recordset. The statement names its columns; a `?` stands
/// for each value. While a reader lives nobody may write to the store, close it, or read the same statement.
class RowReader {
  public:
    RowReader(Connection& connection, std::string_view statement,
              std::initializer_list<std::string_view> values = {});
    RowReader(RowReader&&) noexcept;
    RowReader& operator=(RowReader&&) noexcept;
    ~RowReader();

    /// Goes to the next row, first to the first one; false behind the last.
    bool Next();
    /// Of the present row, columns from 0, null as empty text; valid until Next.
    std::string_view Text(int column) const;
    std::string Copy(int column) const { return std::string(Text(column)); }

  private:
    std::shared_ptr<Database> database_;
    std::unique_ptr<StatementRun> run_;
};

}  // namespace norvelis
