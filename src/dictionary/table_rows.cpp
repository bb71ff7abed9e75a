#include "dictionary/table_rows.h"

namespace norvelis::dictionary {

Recordset RowsOf(Connection& store, const TableDefinition& table, const std::optional<std::string>& schema) {
    const std::string statement = "Select * FROM " + std::string(table.name);
    return schema ? store.Select(statement + " where schemaname =?", {*schema}) : store.Select(statement);
}

}  // namespace norvelis::dictionary
