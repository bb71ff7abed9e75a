#include "sqlconv/tables/schema_model.h"

#include <algorithm>

namespace norvelis::tables {

const Column* Table::Find(std::string_view column) const {
    const auto found = std::ranges::find(columns, column, &Column::name);
    return found == columns.end() ? nullptr : &*found;
}

}  // namespace norvelis::tables
