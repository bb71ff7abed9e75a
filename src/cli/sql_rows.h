#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sqlconv/sql_result.h"

namespace norvelis::cli {

/// Prints the rows of a query to standard output as they come.
class RowPrinter {
  public:
    virtual ~RowPrinter() = default;
    virtual void Fields(const std::vector<SqlField>& fields) = 0;
    virtual void Row(const std::vector<std::optional<std::string>>& row) = 0;
    /// Also after a failure: what was printed until then is whole.
    virtual void End() {}
};

/// Columns between tabs for people, long values cut; or CSV, or a JSON object {"fields": [...], "rows":
/// [[...]]} with whole values.
std::unique_ptr<RowPrinter> MakeRowPrinter(bool csv, bool json);

}  // namespace norvelis::cli
