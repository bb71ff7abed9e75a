#include "cli/dump.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "dictionary/table_rows.h"
#include "store/tables.h"
#include "store/transaction.h"

namespace norvelis::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string Text(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

void PrintDump(Connection& store, const std::optional<std::string>& schema) {
    // One picture of the store, even while another program extracts into it.
    const Transaction picture(store, Transaction::Purpose::Read);
    std::printf("{\"tables\":{");
    const char* betweenTables = "";
    for (const auto& table : DictionaryTables()) {
        std::printf("%s\n\"%s\":[", betweenTables, std::string(table.name).c_str());
        betweenTables = ",";
        const char* betweenRows = "";
        for (Recordset rows = dictionary::RowsOf(store, table, schema); !rows.Eof(); rows.MoveNext()) {
            Json row = Json::object();
            for (const auto& column : table.columns) {
                const auto value = rows.Value(column.name);
                row[std::string(column.name)] = value ? Json(*value) : Json();
            }
            std::printf("%s\n%s", betweenRows, Text(row).c_str());
            betweenRows = ",";
        }
        std::printf("]");
    }
    std::printf("}}\n");
}

std::string SettingJson(const std::string& name, const Setting& setting) {
    return Text(
        Json{{"settingname", name}, {"settingvalue", setting.value}, {"settingvalue2", setting.value2}});
}

}  // namespace norvelis::cli
