#include "store/inserter.h"

#include <string>

#include "store/database.h"
#include "store/statement_run.h"

namespace norvelis {

Inserter::Inserter(Connection& connection, std::string_view table,
                   std::initializer_list<std::string_view> columns)
    : database_(connection.database_.get()) {
    std::string names, marks;
    for (const auto column : columns) {
        names += (names.empty() ? "\"" : ", \"") + std::string(column) + "\"";
        marks += marks.empty() ? "?" : ", ?";
    }
    statement_ = connection.database_->Prepare("INSERT INTO " + std::string(table) + " (" + names +
                                               ") VALUES (" + marks + ")");
}

void Inserter::Add(std::span<const std::optional<std::string_view>> values) {
    StatementRun run(*database_, statement_);
    int position = 0;
    for (const auto& value : values) run.Bind(++position, value);
    run.Step();
}

}  // namespace norvelis
