// What finding anything costs in a dictionary of 60,000 fields: making the index ready beside reading the
// dictionary, and a key stroke beside one scan of all names with std::string::find.
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

#include "base/text.h"
#include "browse/find_index.h"
#include "dictionary/schema_contents.h"
#include "dictionary/table_rows.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

constexpr int kSchemas = 4, kRecords = 500, kFields = 30, kRuns = 15;
constexpr const char* kWords[] = {"CUSTOMER", "ORDER", "EMPLOYEE", "DEPT", "ITEM",  "NAME", "DATE", "CODE",
                                  "ADDRESS",  "TOTAL", "STATUS",   "TEXT", "LINE",  "ID",   "RATE", "COUNT",
                                  "START",    "END",   "REGION",   "TYPE", "GRADE", "UNIT", "KEY"};

std::string SchemaName(int schema) {
    return fmt::format("SCHEMA{:02}", schema);
}
std::string RecordName(int record) {
    return fmt::format("{}-{:04}", kWords[static_cast<std::size_t>(record) % std::size(kWords)], record);
}
std::string FieldName(int record, int field) {
    const auto word = [](int i) { return kWords[static_cast<std::size_t>(i) % std::size(kWords)]; };
    return fmt::format("{}-{}-{:04}", word(record * 7 + field), word(record + field * 3 + 1), record);
}

void WriteSchema(Connection& store, int schema) {
    SchemaRows rows(store, SchemaName(schema));
    Inserter fields(store, "Record_layout",
                    {"schemaname", "Recordname", "Fieldlevel", "fieldname", "fieldusage", "fieldpicture",
                     "fieldstart", "fieldend"});
    for (int i = 0; i < kRecords; ++i) {
        const int record = schema * kRecords + i;
        const std::string name = RecordName(record), schemaName = SchemaName(schema);
        rows.Entry(name);
        rows.Index("IX-" + name, name, "KEY", "ASC");
        for (int field = 0; field < kFields; ++field) {
            const std::string fieldName = FieldName(record, field);
            const std::optional<std::string_view> values[] = {schemaName, name,   "02", fieldName,
                                                              "DISPLAY",  "X(8)", "1",  "8"};
            fields.Add(values);
        }
        for (const int member : {record + 1, record * 3 + 2, record * 7 + 5})
            rows.Set(fmt::format("SET-{}", record * 10 + member % 10), name, RecordName(member));
    }
}

void ReadContents(Connection& store) {
    for (int schema = 0; schema < kSchemas; ++schema) dictionary::ReadSchema(store, SchemaName(schema));
}

void ReadTables(Connection& store) {
    for (const auto& table : DictionaryTables()) {
        for (auto row = dictionary::RowsOf(store, table, std::nullopt); !row.Eof(); row.MoveNext()) {
            for (const auto& column : table.columns) row.Value(column.name);
        }
    }
}

std::string AllNames(const FindIndex& index) {
    std::string names;
    for (const auto& found : index.Find({"", FindKinds().set()}, SIZE_MAX).best)
        names += UpperCase(found.name) + '\n';
    return names;
}

volatile std::size_t scanned = 0;  ///< So that no scan is left out.

void Scan(const std::string& names, const std::string& text) {
    std::size_t count = 0;
    for (auto at = names.find(text); at != std::string::npos; at = names.find(text, at + 1)) ++count;
    scanned = count;
}

double Milliseconds(const std::function<void()>& work, int runs = kRuns) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::ranges::nth_element(times, times.begin() + runs / 2);
    return times[static_cast<std::size_t>(runs) / 2];
}

void ReportRow(const std::string& what, double ours, double yardstick) {
    fmt::print("| {} | {:.3f} | {:.3f} | {:.2f} |\n", what, ours, yardstick, ours / yardstick);
}

}  // namespace
}  // namespace norvelis

int main() {
    using namespace norvelis;
    TestApp test;
    Connection& store = *test.app.gConnection;
    for (int schema = 0; schema < kSchemas; ++schema) WriteSchema(store, schema);
    fmt::print("| index of all names | ms | reading the dictionary ms | ratio |\n|---|--:|--:|--:|\n");
    const double ready = Milliseconds([&] { FindIndex index(store); });
    ReportRow("beside each schema read whole", ready, Milliseconds([&] { ReadContents(store); }));
    ReportRow("beside every row of every table", ready, Milliseconds([&] { ReadTables(store); }, 3));
    const auto coldly = [&](const std::function<void(Connection&)>& read) {
        return Milliseconds([&] { read(*Connection::OpenFile(test.StorePath())); });
    };
    const double open = coldly([](Connection&) {});
    const double firstReady = coldly([](Connection& opened) { FindIndex index(opened); }) - open;
    ReportRow("each schema, in a store just opened", firstReady, coldly(ReadContents) - open);
    ReportRow("every row, in a store just opened", firstReady, coldly(ReadTables) - open);

    const FindIndex index(store);
    const std::string names = AllNames(index);
    fmt::print("\n| key stroke | found | ms | scan of {} bytes ms | ratio |\n|---|--:|--:|--:|--:|\n",
               names.size());
    constexpr std::size_t kShown = 500;
    for (const std::string text : {"E", "EM", "EMP", "EMPL", "EMPLOYEE", "0", "04", "0415",
                                   "CUSTOMER-NAME-0415", "-", "NOTHING-OF-THIS", "Z"}) {
        const FindText wanted = ReadFindText(text);
        std::size_t found = 0;
        const double ours = Milliseconds([&] { found = index.Find(wanted, kShown).count; });
        ReportRow(fmt::format("{} | {}", text, found), ours, Milliseconds([&] { Scan(names, text); }));
    }
    for (const auto& [pattern, literal] : {std::pair("EMP*", "EMP"), std::pair("*-NAME-????", "-NAME-")}) {
        const FindText wanted = ReadFindText(pattern);
        std::size_t found = 0;
        const double ours = Milliseconds([&] { found = index.Find(wanted, kShown).count; });
        ReportRow(fmt::format("{} | {}", pattern, found), ours, Milliseconds([&] { Scan(names, literal); }));
    }
    std::size_t used = 0;
    const double ours =
        Milliseconds([&] { used = index.WhereUsed(ReadFindText("NAME-0415"), kShown).count; });
    ReportRow(fmt::format("where used: NAME-0415 | {}", used), ours,
              Milliseconds([&] { Scan(names, "NAME-0415\n"); }));
}
