#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "sqlconv/odbc_folder.h"
#include "sqlconv/server_tables.h"
#include "sqlconv/table_procedures.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

double SecondsOf(const std::function<void()>& step) {
    const auto begin = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// Cancels from another thread after a while.
class CancelLater {
  public:
    CancelLater(std::stop_source& cancellation, std::chrono::milliseconds after)
        : thread_([&cancellation, after] {
              std::this_thread::sleep_for(after);
              cancellation.request_stop();
          }) {}

  private:
    std::jthread thread_;
};

TEST(Waiting, AHangingStatementIsLeftOnCancel) {
    const OdbcFolder odbc;
    odbc.ScriptedSource("on SELECT\nwait 60000\n");
    TestApp test;
    SqlState sql(test.app);
    std::stop_source cancellation;
    sql.cancellation = cancellation.get_token();
    const CancelLater cancel(cancellation, 200ms);
    EXPECT_LT(SecondsOf([&] { EXPECT_THROW(TablesOf(sql, odbc.mssql), SqlFailure); }), 2.0);
    EXPECT_EQ(odbc.Calls({"cancel"}).size(), 1u);
    EXPECT_FALSE(sql.gSqlConnected);
}

TEST(Waiting, AHangingConnectIsAbandonedOneAtATime) {
    const OdbcFolder odbc;
    odbc.ScriptedSource("connect wait 3000\n");
    TestApp test;
    SqlState sql(test.app);
    {
        std::stop_source cancellation;
        sql.cancellation = cancellation.get_token();
        const CancelLater cancel(cancellation, 200ms);
        EXPECT_LT(SecondsOf([&] { EXPECT_THROW(ConnectSql(sql, odbc.mssql, 600), SqlFailure); }), 2.0);
    }
    WriteFile(odbc.Path("script"), "");
    sql.cancellation = {};
    try {
        ConnectSql(sql, odbc.mssql, 600);
        FAIL() << "two connects under way";
    } catch (const SqlFailure& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("has not ended yet"));
    }
    // What it opened in the end is closed again, and the next connect goes through.
    for (int i = 0; i < 500 && odbc.Calls({"disconnect"}).empty(); ++i) std::this_thread::sleep_for(20ms);
    EXPECT_EQ(odbc.Calls({"disconnect"}).size(), 1u);
    std::this_thread::sleep_for(50ms);
    ConnectSql(sql, odbc.mssql, 600);
    EXPECT_TRUE(sql.gSqlConnected);
}

TEST(Waiting, RowsArriveWhileOthersCome) {
    const OdbcFolder odbc;
    odbc.ScriptedSource("on SELECT\ncolumn n 4\nrows 200 10\n");
    Connector connector;
    std::stop_source cancellation;
    std::size_t fetchedAtFirst = 0, rows = 0;
    const auto run = [&](std::size_t limit) {
        rows = 0;
        return Execute(connector, cancellation.get_token(), {"P", "SELECT", odbc.mssql, "", ""},
                       {[](const auto&) {},
                        [&](const auto&) {
                            if (rows++ == 0) fetchedAtFirst = odbc.Calls({"fetch"}).size();
                            if (rows == 50) cancellation.request_stop();
                        }},
                       limit);
    };
    const QueryEnd end = run(20);
    EXPECT_EQ(fetchedAtFirst, 1u);
    EXPECT_EQ(end.rows, 20u);
    EXPECT_TRUE(end.limited);
    EXPECT_LT(SecondsOf([&] { EXPECT_THROW(run(1000), SqlFailure); }), 2.0);
    EXPECT_EQ(rows, 50u);
}

}  // namespace
}  // namespace norvelis
