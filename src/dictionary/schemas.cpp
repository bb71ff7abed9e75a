#include "dictionary/schemas.h"

#include "base/text.h"

namespace norvelis::dictionary {

Recordset Schemas(Connection& store) {
    return store.Select("Select distinct(schemaname) FROM Parents");
}

Recordset SchemasByName(Connection& store) {
    return store.Select("Select distinct(schemaname) FROM Parents order by schemaname");
}

Recordset SchemasOfRecords(Connection& store) {
    return store.Select("Select DISTINCT(schemaname) FROM Record_Details order by schemaname asc");
}

Recordset SchemaHeader(Connection& store, std::string_view schema) {
    return store.Select("Select * FROM schema_details where schemaname = ?", {schema});
}

std::optional<std::string> StoredSchemaName(Connection& store, std::string_view schema) {
    const auto row = store.Select("Select schemaname FROM Record_Details where schemaname = ?", {schema});
    return row.Eof() ? std::nullopt : std::optional(std::string(Trim(row.Text("schemaname"))));
}

long CountRecords(Connection& store, std::string_view schema) {
    return store.Count("Select count(*) FROM Record_Details where schemaname = ?", {schema});
}

SchemaCounts CountContents(Connection& store, std::string_view schema) {
    const auto count = [&](const char* statement) { return store.Count(statement, {schema}); };
    return {count("Select count(*) FROM Record_Details where schemaname = ? and recordtype = 'Record'"),
            count("Select count(distinct set) FROM Connection_Details where schemaname = ?"),
            count("Select count(distinct Recordname) FROM Index_Details where schemaname = ?")};
}

Recordset EntryRecords(Connection& store, std::string_view schema) {
    return store.Select("Select * FROM Parents where schemaname = ?", {schema});
}

Recordset EntryRecordsByName(Connection& store, std::string_view schema) {
    return store.Select("Select * FROM Parents where schemaname = ? order by recordname asc", {schema});
}

long CountEntryRecords(Connection& store, std::string_view schema) {
    return store.Count("Select count(*) FROM Parents where schemaname = ?", {schema});
}

}  // namespace norvelis::dictionary
