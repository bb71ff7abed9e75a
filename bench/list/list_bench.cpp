// What a click costs in the record list of a large schema: the schema, a record, an owner chosen, each beside
// the bare statements that the same choice needs, all their rows and columns read.
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

#include "browse/record_list.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

constexpr int kRecords = 2000, kRuns = 31;

std::string RecordName(int i) {
    return fmt::format("RECORD-{:04}", i % kRecords);
}

void WriteSchema(Connection& store) {
    SchemaRows rows(store, "LARGE");
    for (int i = 0; i < kRecords; ++i) {
        rows.Record(RecordName(i));
        rows.Index("IX-" + RecordName(i), RecordName(i), "KEY", "ASC");
        for (int field = 0; field < 30; ++field) {
            store.Execute(
                "Insert into Record_layout (schemaname, Recordname, Fieldlevel, fieldname, fieldpicture, "
                "fieldusage) values ('LARGE', ?, '02', ?, 'X(8)', 'DISPLAY')",
                {RecordName(i), fmt::format("FIELD-{}", field)});
        }
        for (const int member : {i + 1, 3 * i + 2, 7 * i + 5})
            rows.Set(fmt::format("SET-{}", i), RecordName(i), RecordName(member));
    }
}

struct Bare {
    std::string statement, value;
};

void RunBare(Connection& store, const std::vector<Bare>& statements) {
    for (const auto& [statement, value] : statements) {
        auto rows = value.empty() ? store.Select(statement) : store.Select(statement, {value});
        for (; !rows.Eof(); rows.MoveNext()) rows.Text("schemaname");
    }
}

std::vector<Bare> StatementsOfRecord(const std::string& name) {
    return {{"Select * FROM Record_Details where recordtype = 'Record' and Recordname = ?", name},
            {"Select * FROM Index_Details where next_step = ?", name},
            {"Select * FROM Record_layout where Recordname = ?", name},
            {"Select * FROM Connection_Details where next_step = ? order by recordname", name},
            {"Select * FROM Connection_Details where Recordname = ? order by next_step", name}};
}

double Milliseconds(const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < kRuns; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::ranges::nth_element(times, times.begin() + kRuns / 2);
    return times[kRuns / 2];
}

void Report(const char* choice, const std::function<void()>& work, const std::function<void()>& bare) {
    const double ours = Milliseconds(work), yardstick = Milliseconds(bare);
    fmt::print("| {} | {:.2f} | {:.2f} | {:.2f} |\n", choice, ours, yardstick, ours / yardstick);
}

}  // namespace
}  // namespace norvelis

int main() {
    using namespace norvelis;
    TestApp test;
    Connection& store = *test.app.gConnection;
    WriteSchema(store);
    fmt::print("| choice | ms | statements alone ms | ratio |\n|---|--:|--:|--:|\n");
    Report(
        "a schema, which shows its first record",
        [&] { ShowRecord(store, LoadRecordsList(store, "LARGE").front(), "LARGE"); },
        [&] {
            RunBare(store, {{"Select * FROM Record_Details where schemaname = ? and recordtype = 'Record' "
                             "order by recordname asc",
                             "LARGE"}});
            RunBare(store, StatementsOfRecord(RecordName(0)));
        });
    int record = 0;
    const auto next = [&record] { return RecordName(record += 97); };
    Report(
        "a record", [&] { ShowRecord(store, next(), "LARGE"); },
        [&] { RunBare(store, StatementsOfRecord(next())); });
    const std::string owner = ShowRecord(store, RecordName(1000), "LARGE").owners.front().name;
    Report(
        "an owner", [&] { ShowRecord(store, owner, "LARGE"); },
        [&] { RunBare(store, StatementsOfRecord(owner)); });
}
