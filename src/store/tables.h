#pragma once

#include <span>
#include <string>
#include <string_view>

namespace norvelis {

enum class ColumnKind { Text, AutoNumber, DateTime, Boolean };

struct ColumnDefinition {
    std::string_view name;  ///< In its classic spelling.
    ColumnKind kind = ColumnKind::Text;
};

/// One table of the store. Text compares without regard to letter case. Indexes serve the keys that
/// statements use.
struct TableDefinition {
    std::string_view name;
    std::span<const ColumnDefinition> columns;
    std::span<const std::string_view> indexes;  ///< Each a comma list of columns.
};

/// The six dictionary tables first, in the order of a dump, then ApplicationSetting, schedules,
/// tableprocedures.
std::span<const TableDefinition> AllTables();
/// The first six of them.
std::span<const TableDefinition> DictionaryTables();

/// "Create table …" and its "Create index …" as one script for the store's engine.
std::string CreationScript(const TableDefinition& table);

}  // namespace norvelis
