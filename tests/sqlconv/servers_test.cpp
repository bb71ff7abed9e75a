#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlcipher/sqlite3.h>

#include <thread>

#include "sqlconv/mariadb_server.h"
#include "sqlconv/odbc_folder.h"
#include "sqlconv/postgres_server.h"
#include "sqlconv/server_tables.h"
#include "sqlconv/table_procedures.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

using Row = std::vector<std::optional<std::string>>;

std::vector<Row> RowsOf(SqlConnection& connection, const std::string& statement) {
    std::vector<Row> rows;
    SqlResult result = connection.Execute(statement);
    while (const auto* row = result.Next()) rows.push_back(*row);
    return rows;
}

std::string RefusalOf(const std::function<void()>& step) {
    try {
        step();
    } catch (const SqlFailure& failure) {
        return failure.what();
    }
    return {};
}

std::vector<std::string> Lines(const std::vector<ServerField>& fields) {
    std::vector<std::string> lines;
    for (const auto& field : fields) lines.push_back(field.name + "|" + field.type);
    return lines;
}

class Sqlite : public ::testing::Test {
  protected:
    Sqlite() { odbc.SqliteSource(); }
    OdbcFolder odbc;
    TestApp test;
};

TEST_F(Sqlite, TablesFieldsAndValues) {
    {
        SqlConnection connection({odbc.lite, "", "", 0});
        connection.Execute(
            "create table \"Odd Name\" (id integer, price double, made date, note varchar(9))");
        connection.Execute("create table blobs (b blob)");
        connection.Execute(
            "insert into \"Odd Name\" values (1, 2.5, '2024-02-29', 'caf\xC3\xA9'), (2, null, null, '')");
        connection.Execute("insert into blobs values (x'00FF10'), (zeroblob(20000))");
        const auto rows = RowsOf(connection, "select id, price, note from \"Odd Name\" order by id");
        EXPECT_THAT(rows, ElementsAre(Row{"1", "2.5", "caf\xC3\xA9"}, Row{"2", std::nullopt, ""}));
        const auto blobs = RowsOf(connection, "select b from blobs");
        EXPECT_EQ(blobs[0][0], "0x00FF10");
        EXPECT_EQ(blobs[1][0]->size(), 40'002u);
    }
    SqlState sql(test.app);
    const auto tables = TablesOf(sql, odbc.lite);
    ASSERT_EQ(tables.size(), 2u);
    EXPECT_EQ(tables[0].shown, "ODD NAME");
    EXPECT_EQ(tables[1].shown, "BLOBS");
    EXPECT_THAT(Lines(FieldsOf(sql, tables[0])),
                ElementsAre("ID|INT", "PRICE|DOUBLE", "MADE|LONGTEXT", "NOTE|LONGTEXT"));
}

// The store brings a database engine of its own, and so does the driver; each must use its own.
TEST_F(Sqlite, StoreAndDriverKeepTheirOwnEngines) {
    SqlConnection connection({odbc.lite, "", "", 0});
    const std::string driver = *RowsOf(connection, "select sqlite_version()").at(0).at(0);
    auto row = test.app.gConnection->Select("Select sqlite_version() as version FROM sqlite_master");
    const std::string store = row.Text("version");
    EXPECT_NE(store, driver);
    EXPECT_EQ(store, SQLITE_VERSION);
    // The pragma is known to the store's engine alone.
    EXPECT_TRUE(RowsOf(connection, "pragma cipher_version").empty());
    for (int i = 0; i < 50; ++i) {
        connection.Execute("create table t" + std::to_string(i) + " (a)");
        test.app.gConnection->Execute("Insert into Parents (schemaname, Recordname) values (?, ?)",
                                      {"S", "R"});
    }
    EXPECT_EQ(RowsOf(connection, "pragma integrity_check").at(0).at(0), "ok");
    EXPECT_EQ(test.app.gConnection->Count("Select count(*) FROM Parents"), 50);
}

class Postgres : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { server = std::make_unique<PostgresServer>(); }
    static void TearDownTestSuite() { server.reset(); }
    Postgres() { odbc.Source(odbc.pg, POSTGRES_DRIVER, server->Keys()); }

    static inline std::unique_ptr<PostgresServer> server;
    OdbcFolder odbc;
    TestApp test;
};

TEST_F(Postgres, TablesAndFieldsOfTheOwnCatalogue) {
    {
        SqlConnection connection({odbc.pg, "", "", 0});
        connection.Execute("create schema other");
        connection.Execute(
            "create table \"Mixed Case\" (s smallint, i integer, b bigint, n numeric(9,2), v varchar(20), "
            "c char(3), t text, d date, tm time, ts timestamp, by bytea, bo boolean, r real, dp double "
            "precision, u uuid)");
        connection.Execute("create table other.job (id integer)");
    }
    SqlState sql(test.app);
    const auto tables = TablesOf(sql, odbc.pg);
    ASSERT_EQ(tables.size(), 2u);
    EXPECT_EQ(tables[0].from, "\"other\".\"job\"");
    EXPECT_EQ(tables[1].shown, "MIXED CASE");
    EXPECT_THAT(Lines(FieldsOf(sql, tables[1])),
                ElementsAre("S|SMALLINT", "I|INT", "B|LONGTEXT", "N|DOUBLE", "V|LONGTEXT", "C|LONGTEXT",
                            "T|LONGTEXT", "D|LONGTEXT", "TM|LONGTEXT", "TS|LONGTEXT", "BY|LONGTEXT",
                            "BO|LONGTEXT", "R|FLOAT", "DP|DOUBLE", "U|INT"));
    SqlConnection({odbc.pg, "", "", 0}).Execute("drop table \"Mixed Case\", other.job");
}

TEST_F(Postgres, ValuesOfEveryKind) {
    SqlConnection connection({odbc.pg, "", "", 0});
    EXPECT_THAT(RowsOf(connection,
                       "select 'caf\xC3\xA9 \xE6\xBC\xA2 \xF0\x9F\x98\x80', null::int, '\\x00ff'::bytea, "
                       "'infinity'::date, '9999-12-31'::date, ''"),
                ElementsAre(Row{"caf\xC3\xA9 \xE6\xBC\xA2 \xF0\x9F\x98\x80", std::nullopt, "0x00FF",
                                RowsOf(connection, "select 'infinity'::date")[0][0], "9999-12-31", ""}));
    const auto big = RowsOf(connection, "select repeat('0123456789', 1048576)");
    EXPECT_EQ(big[0][0]->size(), 10'485'760u);
    EXPECT_TRUE(big[0][0]->ends_with("56789"));
    EXPECT_TRUE(RowsOf(connection, "create temp table x (a int)").empty());
}

TEST_F(Postgres, SeveralResultsAndRefusals) {
    Connector connector;
    std::stop_source cancellation;
    std::vector<Row> rows;
    const RowReceiver receiver{[](const auto&) {}, [&rows](const auto& row) { rows.push_back(row); }};
    const auto run = [&](const std::string& statement) {
        return Execute(connector, cancellation.get_token(), {"P", statement, odbc.pg, "", ""}, receiver);
    };
    EXPECT_TRUE(run("select 1; select 2").moreResults);
    EXPECT_THAT(rows, ElementsAre(Row{"1"}));
    EXPECT_THAT(RefusalOf([&] { run("selec 1"); }), HasSubstr("syntax error at or near \"selec\""));
    std::jthread cancel([&cancellation] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        cancellation.request_stop();
    });
    EXPECT_THAT(RefusalOf([&] { run("select pg_sleep(60)"); }), HasSubstr("57014"));
}

TEST_F(Postgres, ALiteralConversionIsRefusedInTheServersWords) {
    SqlConnection connection({odbc.pg, "", "", 600});
    EXPECT_THAT(RefusalOf([&] {
                    connection.Execute("Create Table D.dbo.R (K_ID INT IDENTITY(1,1) NOT NULL, A_1 INT)");
                }),
                HasSubstr("syntax error at or near \"IDENTITY\""));
}

TEST(Mariadb, TablesOfTheOwnCatalogueAloneAndRefusalsInItsWords) {
    const MariadbServer server;
    const OdbcFolder odbc;
    const std::string source = "MARIA" + odbc.own;
    odbc.Source(source, MARIADB_DRIVER, server.Keys());
    {
        SqlConnection connection({source, "", "", 0});
        connection.Execute(
            "create table `Odd ``Name` (small tinyint unsigned, i int, price double, name varchar(20), made "
            "date)");
        connection.Execute("insert into `Odd ``Name` values (200, 7, 2.5, 'caf\xC3\xA9', '2024-02-29')");
        EXPECT_THAT(RowsOf(connection, "select * from `Odd ``Name`"),
                    ElementsAre(Row{"200", "7", "2.5", "caf\xC3\xA9", "2024-02-29"}));
        EXPECT_THAT(RefusalOf([&] {
                        connection.Execute("Create Table D.dbo.R (K_ID INT IDENTITY(1,1) NOT NULL, A_1 INT)");
                    }),
                    HasSubstr("error in your SQL syntax"));
    }
    TestApp test;
    SqlState sql(test.app);
    const auto tables = TablesOf(sql, source);
    ASSERT_EQ(tables.size(), 1u);
    EXPECT_EQ(tables[0].shown, "ODD `NAME");
    EXPECT_THAT(Lines(FieldsOf(sql, tables[0])),
                ElementsAre("SMALL|CHAR(255)", "I|INT", "PRICE|DOUBLE", "NAME|LONGTEXT", "MADE|LONGTEXT"));
}

TEST(PostgresTrouble, AWrongPasswordAndAServerThatGoesAway) {
    PostgresServer server("right one");
    OdbcFolder odbc;
    odbc.Source(odbc.pg, POSTGRES_DRIVER, server.Keys());
    const std::string refusal = RefusalOf([&] { SqlConnection({odbc.pg, "tester", "wrong one", 10}); });
    EXPECT_THAT(refusal, HasSubstr("password authentication failed"));
    EXPECT_EQ(refusal.find("wrong one"), std::string::npos);
    SqlConnection connection({odbc.pg, "tester", "right one", 10});
    EXPECT_EQ(RowsOf(connection, "select 1").size(), 1u);
    server.Stop();
    EXPECT_NE(RefusalOf([&] { RowsOf(connection, "select 1"); }), "");
    EXPECT_NE(RefusalOf([&] { RowsOf(connection, "select 1"); }), "");
    EXPECT_NE(RefusalOf([&] { connection.Tables(); }), "");
}

}  // namespace
}  // namespace norvelis
