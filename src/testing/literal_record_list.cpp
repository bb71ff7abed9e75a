#include "testing/literal_record_list.h"

#include <algorithm>

namespace norvelis::literal {

namespace {

using Rows = std::vector<Row>;

std::string Trimmed(const std::string& text) {
    const auto begin = text.find_first_not_of(' ');
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

std::string Upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

/// What a comparison of the store sees of a text.
std::string Compared(const std::string& text) {
    std::string seen = Upper(text);
    seen.erase(seen.find_last_not_of(' ') + 1);
    return seen;
}

Rows Where(const Rows& rows, const std::string& column, const std::string& value) {
    Rows found;
    for (const Row& row : rows) {
        if (!row.IsNull(column) && Compared(row.Bytes(column)) == Compared(value)) found.push_back(row);
    }
    return found;
}

Rows OrderedBy(Rows rows, const std::string& column) {
    std::stable_sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
        if (a.IsNull(column) != b.IsNull(column)) return a.IsNull(column);
        return Compared(a.Bytes(column)) < Compared(b.Bytes(column));
    });
    return rows;
}

Rows All(const Table& table) {
    return {table.begin(), table.end()};
}

std::string OrBlank(const Row& row, const std::string& column) {
    return row.IsNull(column) ? " " : row.Bytes(column);
}

void FillNames(std::vector<std::string>& list, const Rows& rows, const std::string& column) {
    std::string slots[10];
    for (const Row& row : rows) {
        const std::string name = row.Bytes(column);
        bool found = false;
        for (const std::string& slot : slots) {
            if (slot == name) found = true;
        }
        if (found) continue;
        for (std::string& slot : slots) {
            if (slot.empty()) {
                slot = name;
                break;
            }
        }
        list.push_back(name);
    }
}

void FillDetails(ListScreen& screen, const Dictionary& tables, const std::string& name) {
    auto& grid = screen.FlxGrid4;
    const Rows records = Where(Where(All(tables.Record_Details), "recordtype", "Record"), "Recordname", name);
    if (records.empty()) return;
    const Row& record = records.front();
    grid.push_back({"ID", " " + OrBlank(record, "tableid")});
    grid.push_back({"MODE", " " + OrBlank(record, "Recmode")});
    grid.push_back({"KEY", " " + OrBlank(record, "reckey")});
    grid.push_back({"TYPE", " " + OrBlank(record, "rectype")});
    grid.push_back({"LEN", " " + OrBlank(record, "reclen")});

    grid.push_back({"SORT", ""});
    const std::size_t firstSort = grid.size() - 1;
    const Rows indexes = Where(All(tables.Index_Details), "next_step", Trimmed(name));
    if (!indexes.empty()) {
        const Row& index = indexes.front();
        if (!index.Bytes("sortcalckey").empty()) grid[firstSort][0] = index.Bytes("sortcalckey");
        for (std::size_t i = 1; i <= 16; ++i) {
            const std::string number = std::to_string(i);
            const std::string key = index.Bytes("sortkey" + number);
            if (key.empty()) continue;
            while (grid.size() < firstSort + i) grid.push_back({"", ""});
            grid[firstSort + i - 1][1] = " " + key + " " + index.Bytes("sortorder" + number);
        }
    }

    grid.push_back({"IDX", ""});
    bool first = true;
    for (const char* column : {"Index1", "Index2", "Index3", "Index4"}) {
        if (Trimmed(record.Bytes(column)).empty()) continue;
        if (!first) grid.push_back({"", ""});
        first = false;
        grid.back()[1] = " " + record.Bytes(column);
    }
}

void FillLayout(ListScreen& screen, const Dictionary& tables, const std::string& name) {
    for (const Row& field : Where(All(tables.Record_layout), "Recordname", name)) {
        const std::string usage = field.Bytes("fieldusage");
        const auto occurs = usage.find("OCCURS");
        const bool repeats = occurs != std::string::npos;
        screen.flxgrid5.push_back({" " + field.Bytes("Fieldlevel"), " " + field.Bytes("fieldname"),
                                   " " + field.Bytes("fieldpicture"), " " + Trimmed(usage.substr(0, 12)),
                                   repeats ? " YES" : "",
                                   repeats ? " " + Trimmed(usage.substr(occurs + 6)) : ""});
    }
    while (screen.flxgrid5.size() < 30) screen.flxgrid5.push_back({" ", " ", " ", " ", " ", " "});
}

}  // namespace

void LoadSchemaList(ListScreen& screen, const Dictionary& tables) {
    screen = {};
    for (const Row& row : OrderedBy(All(tables.Record_Details), "schemaname")) {
        const std::string schema = Trimmed(row.Bytes("schemaname"));
        if (screen.FlxGrid0.empty() || Compared(screen.FlxGrid0.back()) != Compared(schema))
            screen.FlxGrid0.push_back(schema);
    }
    if (!screen.FlxGrid0.empty()) LoadRecordsList(screen, tables, screen.FlxGrid0.front());
}

void LoadRecordsList(ListScreen& screen, const Dictionary& tables, std::string_view schema) {
    screen.FlxGrid3.clear();
    const Rows records =
        Where(Where(All(tables.Record_Details), "schemaname", std::string(schema)), "recordtype", "Record");
    for (const Row& row : OrderedBy(records, "Recordname")) {
        screen.FlxGrid3.push_back(Trimmed(row.Bytes("Recordname")));
        if (screen.FlxGrid3.size() == 1 && !screen.FlxGrid3.front().empty())
            ShowRecord(screen, tables, screen.FlxGrid3.front());
    }
}

void ShowRecord(ListScreen& screen, const Dictionary& tables, std::string_view name) {
    screen.FromList.clear();
    screen.labels.clear();
    screen.FlxGrid4.clear();
    screen.flxgrid5.clear();
    FillDetails(screen, tables, std::string(name));
    FillLayout(screen, tables, std::string(name));
    const std::string key = Upper(Trimmed(std::string(name)));
    const Rows sets = All(tables.Connection_Details);
    FillNames(screen.FromList, OrderedBy(Where(sets, "next_step", key), "Recordname"), "Recordname");
    const Rows records = Where(Where(All(tables.Record_Details), "recordtype", "Record"), "Recordname", key);
    if (!records.empty()) {
        const Row& row = records.front();
        screen.labels = {{"lblRecordname", Upper(OrBlank(row, "Recordname"))},
                         {"lblareaname", OrBlank(row, "areaname")},
                         {"lbltableid", OrBlank(row, "tableid")},
                         {"lblrecmode", OrBlank(row, "Recmode")},
                         {"lblreckey", OrBlank(row, "reckey")},
                         {"lblreclen", OrBlank(row, "reclen")},
                         {"lbldn", OrBlank(row, "rectype")},
                         {"lblDN2", OrBlank(row, "dn")}};
    }
    screen.ToList.clear();
    FillNames(screen.ToList, OrderedBy(Where(sets, "Recordname", key), "next_step"), "next_step");
}

}  // namespace norvelis::literal
