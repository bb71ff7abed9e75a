#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <vector>

#include "sqlconv/odbc_folder.h"
#include "sqlconv/postgres_server.h"
#include "sqlconv/server_tables.h"
#include "sqlconv/table_procedures.h"
#include "testing/test_store.h"

// Choosing a table of ten million rows beside one of ten, and reading 100,000 rows beside the server's own
// command shell, which prints them. Real servers and drivers, medians.
namespace norvelis {
namespace {

double Median(int runs, const std::function<void()>& step) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        step();
        times.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    return times[static_cast<std::size_t>(runs / 2)];
}

constexpr const char* kSmall = "create table small (id integer, name varchar(20), note varchar(20))";
constexpr const char* kBig = "create table big (id integer, name varchar(20), note varchar(20))";

void FillPostgres(const std::string& dsn) {
    SqlConnection connection({dsn, "", "", 0});
    connection.Execute(kSmall);
    connection.Execute(kBig);
    connection.Execute("insert into small select n, 'name ' || n, 'a note' from generate_series(1, 10) n");
    connection.Execute(
        "insert into big select n, 'name ' || n, 'a note' from generate_series(1, 10000000) n");
}

void FillSqlite(const std::string& dsn) {
    const std::string numbers = "with recursive s(n) as (select 1 union all select n + 1 from s limit ";
    SqlConnection connection({dsn, "", "", 0});
    connection.Execute(kSmall);
    connection.Execute(kBig);
    connection.Execute("insert into small " + numbers + "10) select n, 'name ' || n, 'a note' from s");
    connection.Execute("insert into big " + numbers + "10000000) select n, 'name ' || n, 'a note' from s");
}

void CompareTables(SqlState& sql, const std::string& server, const std::string& dsn) {
    const auto tables = TablesOf(sql, dsn);
    const auto named = [&tables](const std::string& shown) {
        return *std::ranges::find(tables, shown, &ServerTable::shown);
    };
    const double small = Median(9, [&] { FieldsOf(sql, named("SMALL")); });
    const double big = Median(9, [&] { FieldsOf(sql, named("BIG")); });
    fmt::print("| {} | {:.4f} | {:.4f} | {:.2f} |\n", server, small, big, big / small);
}

void CompareReading(const std::string& dsn, const PostgresServer& server) {
    const std::string statement = "select * from big limit 100000";
    const double shell = Median(9, [&] {
        const std::string command = std::string(POSTGRES_PROGRAMS) + "/psql -h " + server.Folder() +
                                    " -U tester postgres -c '" + statement + "' >/dev/null";
        if (std::system(command.c_str()) != 0) throw std::runtime_error("psql failed");
    });
    Connector connector;
    const double ours = Median(9, [&] {
        std::vector<std::vector<std::optional<std::string>>> rows;
        Execute(connector, {}, {"P", statement, dsn, "", ""},
                {[](const auto&) {}, [&rows](const auto& row) { rows.push_back(row); }});
        if (rows.size() != 100'000) throw std::runtime_error("rows are missing");
    });
    fmt::print("\n100,000 rows: psql {:.3f} s, read {:.3f} s, ratio {:.2f}\n", shell, ours, ours / shell);
}

void Run() {
    const OdbcFolder odbc;
    const PostgresServer server;
    odbc.Source(odbc.pg, POSTGRES_DRIVER, server.Keys());
    odbc.SqliteSource();
    FillPostgres(odbc.pg);
    FillSqlite(odbc.lite);
    TestApp test;
    SqlState sql(test.app);
    fmt::print("| server | 10 rows s | 10,000,000 rows s | ratio |\n|---|--:|--:|--:|\n");
    CompareTables(sql, "PostgreSQL", odbc.pg);
    CompareTables(sql, "SQLite", odbc.lite);
    CompareReading(odbc.pg, server);
}

}  // namespace
}  // namespace norvelis

int main() {
    norvelis::Run();
}
