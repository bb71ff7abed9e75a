#include "store/row_reader.h"

#include "store/database.h"
#include "store/statement_run.h"

namespace norvelis {

RowReader::RowReader(Connection& connection, std::string_view statement,
                     std::initializer_list<std::string_view> values)
    : database_(connection.database_),
      run_(std::make_unique<StatementRun>(*database_, database_->TextOf(statement).sql)) {
    run_->BindAll(values);
}

RowReader::RowReader(RowReader&&) noexcept = default;
RowReader& RowReader::operator=(RowReader&&) noexcept = default;
RowReader::~RowReader() = default;

bool RowReader::Next() {
    return run_->Step();
}

std::string_view RowReader::Text(int column) const {
    return run_->Text(column);
}

}  // namespace norvelis
