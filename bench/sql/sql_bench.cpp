#include <fmt/format.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>
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
#include "testing/resident_memory.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"
#include "ui/screens/sql/eb_dsn_combo.h"
#include "ui/skins/skin_style.h"
#include "windows.h"

// Choosing a table of ten million rows beside one of ten, and reading 100,000 rows, into memory and into the
// grid of the screen, beside the server's own command shell, which prints them. Then for how long at most the
// windows do not answer while they work with servers. Real servers and drivers, medians.
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

/// The screen that runs statements, on this source.
struct Query {
    ui::Windows windows;
    ui::Form* screen = nullptr;

    explicit Query(const std::string& dsn) {
        windows.Open();
        windows.host.OpenScreen(Screen::TableProcedures, false);
        screen = windows.frame->Find(Screen::TableProcedures);
        screen->findChild<QLineEdit*>("txtdsnName")->setText(QString::fromStdString(dsn));
    }
    QTableView& Grid() const { return *screen->findChild<QTableView*>("FlxGrid"); }
    void Run(const std::string& statement, int rows) const {
        screen->findChild<QPlainTextEdit*>()->setPlainText(QString::fromStdString(statement));
        screen->findChild<QAbstractButton*>("Execute")->click();
        if (Grid().model()->rowCount() != rows) throw std::runtime_error("rows are missing");
    }
};

void CompareReading(const std::string& dsn, const PostgresServer& server) {
    constexpr int kRows = 100'000;
    const std::string statement = "select * from big limit 100000";
    const double shell = Median(9, [&] {
        const std::string command = std::string(POSTGRES_PROGRAMS) + "/psql -h " + server.Folder() +
                                    " -U tester postgres -c '" + statement + "' >/dev/null";
        if (std::system(command.c_str()) != 0) throw std::runtime_error("psql failed");
    });
    Connector connector;
    const double memory = Median(9, [&] {
        std::vector<std::vector<std::optional<std::string>>> rows;
        Execute(connector, {}, {"P", statement, dsn, "", ""},
                {[](const auto&) {}, [&rows](const auto& row) { rows.push_back(row); }});
        if (rows.size() != kRows) throw std::runtime_error("rows are missing");
    });
    const Query query(dsn);
    const double grid = Median(9, [&] { query.Run(statement, kRows); });
    fmt::print(
        "\n100,000 rows: psql {:.3f} s, into memory {:.3f} s (ratio {:.2f}), into the grid {:.3f} s "
        "({:.2f})\n",
        shell, memory, memory / shell, grid, grid / shell);
}

void Measure(const char* what, const std::function<void()>& command) {
    const double before = ResidentMegabytes();
    QElapsedTimer since;
    since.start();
    ui::Pulse pulse;
    command();
    const double seconds = static_cast<double>(since.elapsed()) / 1e3;
    QTest::qWait(50);
    fmt::print("| {} | {:.2f} | {:.3f} | {:.0f} |\n", what, seconds, pulse.Longest(),
               ResidentMegabytes() - before);
}

void MeasureRows(const std::string& dsn) {
    const Query query(dsn);
    Measure("1,000,000 rows into the grid", [&] { query.Run("select * from big", 1'000'000); });
    Measure("sorted by their second column", [&] { query.Grid().sortByColumn(1, Qt::DescendingOrder); });
    Measure("100,000 rows in their place", [&] { query.Run("select * from big limit 100000", 100'000); });
}

/// A schema of 2,000 records with 30 fields each.
void WriteSchema(Connection& store) {
    SchemaRows rows(store, "LARGE");
    for (int record = 0; record < 2000; ++record) {
        const std::string name = fmt::format("RECORD-{:04}", record);
        rows.Record(name);
        for (int field = 0; field < 30; ++field)
            store.Execute(
                "Insert into Record_layout (schemaname, Recordname, fieldname, fieldpicture) values "
                "('LARGE', ?, ?, "
                "'X(8)')",
                {name, fmt::format("FIELD-{}", field)});
    }
}

void MeasureConversion(const OdbcFolder& odbc) {
    std::string script = "on SELECT [name]\ncolumn name 12\n";
    for (int table = 0; table < 2000; ++table) script += fmt::format("row TABLE_{:04}\n", table);
    odbc.ScriptedSource(script + "on SELECT * FROM\ncolumn id 4\n");
    ui::Windows windows;
    WriteSchema(*windows.app.gConnection);
    windows.Open();
    windows.host.OpenScreen(Screen::ConvertSql, false);
    ui::Form& screen = *windows.frame->Find(Screen::ConvertSql);
    screen.findChild<ui::EBDSNCombo*>("cboDSN")->SetDSN(odbc.mssql);
    screen.findChild<QLineEdit*>("txtDBNameIDMS")->setText("LARGE");
    const auto press = [&screen](const char* button) { screen.findChild<QAbstractButton*>(button)->click(); };
    Measure("2,000 tables of a server listed", [&] { press("cmdConnectDBmysql"); });
    auto* tables = screen.findChild<QTableView*>("FlxGrid7");
    Measure("a table chosen", [&] { emit tables->clicked(tables->currentIndex()); });
    Measure("2,000 records converted", [&] { press("cmdCopyDB"); });
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
    fmt::print("\n| | s | longest wait s | grown MB |\n|---|--:|--:|--:|\n");
    MeasureRows(odbc.pg);
    MeasureConversion(odbc);
}

}  // namespace
}  // namespace norvelis

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationName("Norvelis");
    QApplication::setQuitOnLastWindowClosed(false);
    norvelis::ui::UseSkinStyle(application);
    norvelis::Run();
}
