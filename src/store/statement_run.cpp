#include "store/statement_run.h"

#include <sqlcipher/sqlite3.h>

#include "base/text.h"
#include "store/store_failure.h"

namespace norvelis {

StatementRun::~StatementRun() {
    sqlite3_reset(statement_);
}

void StatementRun::Bind(int position, std::optional<std::string_view> value) {
    if (value) {
        sqlite3_bind_text(statement_, position, value->empty() ? "" : value->data(),
                          static_cast<int>(value->size()), SQLITE_STATIC);
    } else {
        sqlite3_bind_null(statement_, position);
    }
}

void StatementRun::Bind(int position, std::int64_t value) {
    sqlite3_bind_int64(statement_, position, value);
}

void StatementRun::BindAll(std::initializer_list<std::string_view> values) {
    int position = 0;
    for (const auto value : values) Bind(++position, TrimEnd(value));
}

bool StatementRun::Step() {
    switch (sqlite3_step(statement_)) {
        case SQLITE_ROW:
            return true;
        case SQLITE_DONE:
            return false;
        default:
            if (HasVanished(database_.Path())) ThrowVanished(database_.Path());
            ThrowStoreFailure(sqlite3_db_handle(statement_), database_.Path());
    }
}

std::vector<std::string> StatementRun::ColumnNames() const {
    std::vector<std::string> names;
    const int count = sqlite3_column_count(statement_);
    for (int i = 0; i < count; ++i) names.emplace_back(sqlite3_column_name(statement_, i));
    return names;
}

std::optional<std::string> StatementRun::Column(int index) const {
    if (sqlite3_column_type(statement_, index) == SQLITE_NULL) return std::nullopt;
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, index));
    return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, index)));
}

std::string_view StatementRun::Text(int index) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, index));
    if (!text) return {};
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, index))};
}

std::int64_t StatementRun::Integer(int index) const {
    return sqlite3_column_int64(statement_, index);
}

}  // namespace norvelis
