#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sqlconv/handles.h"

namespace norvelis {

struct SqlField {
    std::string name;
    int type = 0;  ///< ODBC's number.
    bool isUnsigned = false;
    bool IsBinary() const;
};

/// The rows of a statement, read once from first to last as the server hands them over. Values are UTF-8 text
/// in the driver's form, binary ones "0x" and hexadecimal digits. Keeps its connection alive. Not for use by
/// two threads; another one may cancel the connection's statement, which makes the present call fail.
class SqlResult {
  public:
    /// Takes over a statement that was executed.
    explicit SqlResult(std::unique_ptr<StatementHandle> statement);

    /// Empty when the statement gives no rows at all, such as an update.
    const std::vector<SqlField>& Fields() const { return fields_; }

    /// One value for each field, nothing for null; no row at the end. The row is valid until the next call.
    /// SqlFailure when the server refuses or goes away.
    const std::vector<std::optional<std::string>>* Next();

    /// Whether the statement gave another result behind this one, whose fields and rows then come.
    bool MoreResults();

  private:
    void Describe();
    void ReadValue(std::size_t index);

    std::unique_ptr<StatementHandle> statement_;
    std::vector<SqlField> fields_;
    std::vector<std::optional<std::string>> row_;
    std::vector<char> buffer_;
};

}  // namespace norvelis
