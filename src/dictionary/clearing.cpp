#include "dictionary/clearing.h"

#include "dictionary/findings.h"
#include "store/tables.h"

namespace norvelis::dictionary {

void ClearSchema(Connection& store, std::string_view schema) {
    for (const TableDefinition& table : DictionaryTables())
        store.Execute("Delete * FROM " + std::string(table.name) + " where schemaname = ?", {schema});
    ClearFindings(store, schema);
}

void ClearAll(Connection& store) {
    const auto withoutSchemaDetails = DictionaryTables().subspan(1);
    for (const TableDefinition& table : withoutSchemaDetails)
        store.Execute("Delete * FROM " + std::string(table.name));
    ClearFindings(store, std::nullopt);
}

}  // namespace norvelis::dictionary
