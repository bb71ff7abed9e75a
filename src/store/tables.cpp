#include "store/tables.h"

#include <array>

namespace norvelis {

namespace {

using enum ColumnKind;

constexpr ColumnDefinition kSchemaDetails[] = {
    {"schemaname"}, {"schemarelease"}, {"schemaversion"}, {"schemadate"}};

constexpr ColumnDefinition kParents[] = {{"schemaname"}, {"Recordname"}};

constexpr ColumnDefinition kRecordDetails[] = {
    {"schemaname"},  {"Recordname"}, {"Recmode"}, {"recordtype"}, {"dn"},     {"areaname"},
    {"tableid"},     {"reckey"},     {"recdup"},  {"rectype"},    {"reclen"}, {"color"},
    {"Information"}, {"next_step"},  {"Index1"},  {"Index2"},     {"Index3"}, {"Index4"},
    {"Index5"},      {"Index6"},     {"Index7"},  {"Index8"}};

constexpr ColumnDefinition kRecordLayout[] = {{"schemaname"}, {"Recordname"},   {"Fieldlevel"}, {"fieldname"},
                                              {"fieldusage"}, {"fieldpicture"}, {"fieldstart"}, {"fieldend"}};

constexpr ColumnDefinition kConnectionDetails[] = {
    {"schemaname"}, {"Recordname"}, {"next_step"}, {"connection"}, {"set"}};

constexpr ColumnDefinition kIndexDetails[] = {
    {"schemaname"},  {"Recordname"},  {"next_step"},   {"sortcalckey"}, {"Information"}, {"sortkey1"},
    {"sortkey2"},    {"sortkey3"},    {"sortkey4"},    {"sortkey5"},    {"sortkey6"},    {"sortkey7"},
    {"sortkey8"},    {"sortkey9"},    {"sortkey10"},   {"sortkey11"},   {"sortkey12"},   {"sortkey13"},
    {"sortkey14"},   {"sortkey15"},   {"sortkey16"},   {"sortorder1"},  {"sortorder2"},  {"sortorder3"},
    {"sortorder4"},  {"sortorder5"},  {"sortorder6"},  {"sortorder7"},  {"sortorder8"},  {"sortorder9"},
    {"sortorder10"}, {"sortorder11"}, {"sortorder12"}, {"sortorder13"}, {"sortorder14"}, {"sortorder15"},
    {"sortorder16"}, {"sortoption"}};

constexpr ColumnDefinition kApplicationSetting[] = {{"settingname"}, {"settingvalue"}, {"settingvalue2"}};

constexpr ColumnDefinition kSchedules[] = {{"scheduleid", AutoNumber},
                                           {"name"},
                                           {"address"},
                                           {"tel"},
                                           {"fax"},
                                           {"email"},
                                           {"nextschedule", DateTime},
                                           {"idmsreport"},
                                           {"processed", Boolean},
                                           {"visiofile"}};

constexpr ColumnDefinition kTableProcedures[] = {
    {"tableprocname"}, {"tableprocsql"}, {"dsn"}, {"username"}, {"password"}};

constexpr std::string_view kByRecord[] = {"Recordname, schemaname"};
constexpr std::string_view kByRecordName[] = {"Recordname"};
constexpr std::string_view kByOwnerAndMember[] = {"Recordname, next_step", "next_step, Recordname"};
constexpr std::string_view kByMember[] = {"next_step, Recordname"};

constexpr std::array<TableDefinition, 9> kTables = {{
    {"schema_details", kSchemaDetails, {}},
    {"Parents", kParents, kByRecord},
    {"Record_Details", kRecordDetails, kByRecord},
    {"Record_layout", kRecordLayout, kByRecordName},
    {"Connection_Details", kConnectionDetails, kByOwnerAndMember},
    {"Index_Details", kIndexDetails, kByMember},
    {"ApplicationSetting", kApplicationSetting, {}},
    {"schedules", kSchedules, {}},
    {"tableprocedures", kTableProcedures, {}},
}};

std::string_view SqlType(ColumnKind kind) {
    switch (kind) {
        case Text:
            return "TEXT COLLATE NOCASE";
        case AutoNumber:
            return "INTEGER PRIMARY KEY AUTOINCREMENT";
        case DateTime:
            return "REAL";
        case Boolean:
            return "INTEGER";
    }
    return "";
}

}  // namespace

std::span<const TableDefinition> AllTables() {
    return kTables;
}
std::span<const TableDefinition> DictionaryTables() {
    return std::span(kTables).first(6);
}

std::string CreationScript(const TableDefinition& table) {
    const std::string name(table.name);
    std::string script = "CREATE TABLE " + name + " (";
    for (const auto& column : table.columns) {
        if (!script.ends_with('(')) script += ", ";
        script += '"' + std::string(column.name) + "\" " + std::string(SqlType(column.kind));
    }
    script += ");";
    int number = 0;
    for (const auto index : table.indexes) {
        script += "CREATE INDEX " + name + "_" + std::to_string(++number) + " ON " + name + " (" +
                  std::string(index) + ");";
    }
    return script;
}

}  // namespace norvelis
