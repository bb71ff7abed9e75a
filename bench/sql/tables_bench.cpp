#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <vector>

#include "base/paths.h"
#include "dictionary/schema_contents.h"
#include "sqlconv/mariadb_server.h"
#include "sqlconv/odbc_folder.h"
#include "sqlconv/postgres_server.h"
#include "sqlconv/table_creation.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

// 2,000 records with 60,000 fields as tables with types, keys and relations: the script, and its execution
// beside that by the server's own command shell. Real servers and drivers, medians of runs in turn.
namespace norvelis {
namespace {

constexpr int kRecords = 2000, kFields = 30;

double SecondsOf(const std::function<void()>& step) {
    const auto begin = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double Median(std::vector<double> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// Each record but the first is a member of a set of an earlier one, in the order of a field.
void WriteSchema(Connection& store) {
    SchemaRows rows(store, "LARGE");
    Inserter fields(store, "Record_layout",
                    {"schemaname", "Recordname", "Fieldlevel", "fieldname", "fieldusage", "fieldpicture"});
    for (int record = 0; record < kRecords; ++record) {
        const std::string name = fmt::format("RECORD-{:04}", record);
        rows.Record(name);
        for (int field = 0; field < kFields; ++field) {
            const std::string item = field == 0 ? "EMP-ID-0415" : fmt::format("FIELD-{}", field);
            const std::optional<std::string_view> values[] = {
                "LARGE", name,      "02",
                item,    "DISPLAY", field % 3 == 0 ? "9(4)" : field % 3 == 1 ? "X(8)" : "S9(7)V99"};
            fields.Add(values);
        }
        if (record > 0)
            rows.Set(fmt::format("SET-{:04}", record), fmt::format("RECORD-{:04}", record / 2), name,
                     "NPO\r\nMA ASC FIELD-29 DL");
    }
}

void RunShell(const std::string& command) {
    if (std::system((command + " >/dev/null").c_str()) != 0) throw std::runtime_error("failed: " + command);
}

void Compare(TestApp& test, const std::string& title, const std::string& source, const std::string& shell) {
    SqlState sql(test.app);
    const auto create = [&](ExistingTables existing) {
        TableCreation creation(sql, source);
        creation.existing = existing;
        if (!CreateKeptTables(creation, "LARGE")) throw std::runtime_error(creation.refusal);
    };
    const tables::KeptTables kept = KeptTablesFor(sql, source, "LARGE", {});
    const TemporaryFolder folder;
    const std::string script = folder.Path("script.sql");
    WriteFile(script, tables::ScriptText(kept.script, kept.dialect));
    const auto drop = [&] {
        SqlConnection connection({source, "", "", 0});
        for (const auto& statement : kept.dialect.DropTables(kept.model.tables))
            connection.Execute(statement);
    };
    std::vector<double> own, shells;
    for (int run = 0; run < 3; ++run) {
        own.push_back(SecondsOf([&] { create(ExistingTables::Fail); }));
        drop();
        shells.push_back(SecondsOf([&] { RunShell(shell + " < " + script); }));
        drop();
    }
    fmt::print("| {} | {:.2f} | {:.2f} | {:.2f} |\n", title, Median(own), Median(shells),
               Median(own) / Median(shells));
}

void Run() {
    TestApp test;
    WriteSchema(*test.app.gConnection);
    std::size_t bytes = 0;
    std::vector<double> times;
    for (int run = 0; run < 5; ++run)
        times.push_back(SecondsOf([&] {
            const auto contents = dictionary::ReadSchema(*test.app.gConnection, "LARGE");
            const auto kept = tables::MakeKeptTables(contents, {}, tables::PostgresqlDialect());
            bytes = tables::ScriptText(kept.script, kept.dialect).size();
        }));
    fmt::print("{} records, {} fields to a script of {} bytes: {:.2f} s\n\n", kRecords, kRecords * kFields,
               bytes, Median(times));
    fmt::print("| server | ours s | its shell s | ratio |\n|---|--:|--:|--:|\n");
    const OdbcFolder odbc;
    {
        const PostgresServer server;
        odbc.Source(odbc.pg, POSTGRES_DRIVER, server.Keys());
        Compare(test, "PostgreSQL", odbc.pg,
                std::string(POSTGRES_PROGRAMS) + "/psql -q -v ON_ERROR_STOP=1 -h " + server.Folder() +
                    " -U tester postgres");
    }
    const MariadbServer server;
    odbc.Source("MARIA" + odbc.own, MARIADB_DRIVER, server.Keys());
    Compare(test, "MariaDB", "MARIA" + odbc.own,
            "mariadb --no-defaults --socket=" + server.Folder() + "/s -uroot tests");
}

}  // namespace
}  // namespace norvelis

int main() {
    norvelis::Run();
}
