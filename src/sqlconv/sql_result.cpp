#include "sqlconv/sql_result.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <utility>

namespace norvelis {

namespace {

constexpr std::size_t kBuffer = 16384;  // Longer values come in pieces.

void AppendHex(std::string& text, const char* bytes, std::size_t count) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    for (std::size_t i = 0; i < count; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
}

}  // namespace

bool SqlField::IsBinary() const {
    return type == SQL_BINARY || type == SQL_VARBINARY || type == SQL_LONGVARBINARY;
}

SqlResult::SqlResult(std::unique_ptr<StatementHandle> statement)
    : statement_(std::move(statement)), buffer_(kBuffer) {
    Describe();
}

void SqlResult::Describe() {
    fields_.clear();
    SQLSMALLINT count = 0;
    statement_->Check(SQLNumResultCols(statement_->Get(), &count));
    for (SQLSMALLINT column = 1; column <= count; ++column) {
        SQLCHAR name[1024] = {};
        SQLSMALLINT length = 0, type = 0, decimals = 0, nullable = 0;
        SQLULEN size = 0;
        statement_->Check(SQLDescribeCol(statement_->Get(), static_cast<SQLUSMALLINT>(column), name,
                                         sizeof name, &length, &type, &size, &decimals, &nullable));
        SqlField field{reinterpret_cast<const char*>(name), type, false};
        SQLLEN isUnsigned = SQL_FALSE;
        // Drivers call texts and dates unsigned too; it means something for the smallest whole numbers alone.
        if (type == SQL_TINYINT &&
            SQL_SUCCEEDED(SQLColAttribute(statement_->Get(), static_cast<SQLUSMALLINT>(column),
                                          SQL_DESC_UNSIGNED, nullptr, 0, nullptr, &isUnsigned)))
            field.isUnsigned = isUnsigned == SQL_TRUE;
        fields_.push_back(std::move(field));
    }
    row_.resize(fields_.size());
}

const std::vector<std::optional<std::string>>* SqlResult::Next() {
    if (fields_.empty()) return nullptr;
    const SQLRETURN result = SQLFetch(statement_->Get());
    if (result == SQL_NO_DATA) return nullptr;
    statement_->Check(result);
    for (std::size_t i = 0; i < fields_.size(); ++i) ReadValue(i);
    return &row_;
}

void SqlResult::ReadValue(std::size_t index) {
    const bool binary = fields_[index].IsBinary();
    // A text piece ends with a null character, which takes one place of the buffer.
    const std::size_t piece = binary ? buffer_.size() : buffer_.size() - 1;
    auto& value = row_[index];
    value.reset();
    for (;;) {
        SQLLEN length = 0;
        const SQLRETURN result = SQLGetData(statement_->Get(), static_cast<SQLUSMALLINT>(index + 1),
                                            binary ? SQL_C_BINARY : SQL_C_CHAR, buffer_.data(),
                                            static_cast<SQLLEN>(buffer_.size()), &length);
        if (result == SQL_NO_DATA) return;
        statement_->Check(result);
        if (length == SQL_NULL_DATA) return;
        if (!value) value = binary ? "0x" : "";
        const bool more = length == SQL_NO_TOTAL || static_cast<std::size_t>(length) > piece;
        const std::size_t count = more ? piece : static_cast<std::size_t>(length);
        if (binary) {
            AppendHex(*value, buffer_.data(), count);
        } else {
            value->append(buffer_.data(), count);
        }
        if (!more) return;
    }
}

bool SqlResult::MoreResults() {
    const SQLRETURN result = SQLMoreResults(statement_->Get());
    if (result == SQL_NO_DATA) return false;
    statement_->Check(result);
    Describe();
    return true;
}

}  // namespace norvelis
