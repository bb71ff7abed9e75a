#pragma once

#include <string>

#include "dictionary/table_rows.h"
#include "store/tables.h"

namespace norvelis {

/// Every row of the dictionary as one text, to compare states of a store.
inline std::string EveryRow(Connection& store) {
    std::string all;
    for (const TableDefinition& table : DictionaryTables()) {
        for (auto rows = dictionary::RowsOf(store, table, std::nullopt); !rows.Eof(); rows.MoveNext())
            for (const auto& column : table.columns) all += rows.Value(column.name).value_or("null") + '|';
    }
    return all;
}

}  // namespace norvelis
