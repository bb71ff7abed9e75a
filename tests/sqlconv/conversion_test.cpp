#include "sqlconv/conversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sqlconv/dictionary_rows.h"
#include "sqlconv/odbc_folder.h"
#include "sqlconv/server_tables.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string kListStatement = "SELECT [name] FROM dbo.sysobjects WHERE [type] IN ('U') ORDER BY [name]";

/// Conversions and lists against a server that calls itself Microsoft SQL Server.
class SqlServer : public ::testing::Test {
  protected:
    /// A conversion whose screen records its last status and shows the tables again.
    Conversion NewConversion() {
        return {sql,
                odbc.mssql,
                {[this](const std::string& text) { status = text; }, [this] { DisconnectSql(sql); },
                 [this] { TablesOf(sql, odbc.mssql); }},
                {},
                {},
                {}};
    }

    OdbcFolder odbc;
    TestApp test;
    Connection& store = *test.app.gConnection;
    SqlState sql{test.app};
    std::string status;
};

TEST_F(SqlServer, AConversionInAllItsCalls) {
    odbc.ScriptedSource("on " + kListStatement + "\ncolumn name 12\n");
    AddCustomer(store);
    AddRecord(store, "SALES", "APPLE", "K");
    Conversion conversion = NewConversion();
    EXPECT_TRUE(ConvertSchema(conversion, "SALES", " SALES "));
    EXPECT_EQ(status, "IDMS conversion to SQL was successful.");
    EXPECT_EQ(conversion.createdDatabase, "SALES");
    EXPECT_THAT(conversion.created, ElementsAre("APPLE", "CUSTOMER"));
    EXPECT_FALSE(sql.gSqlConnected);
    const std::string list = "execute " + kListStatement;
    EXPECT_THAT(odbc.Calls({"connect ", "disconnect", "execute"}),
                ElementsAre("connect DSN=" + odbc.mssql, "execute CREATE DATABASE SALES", "disconnect",  //
                            "connect DSN=" + odbc.mssql, list, "disconnect",                             //
                            "connect DSN=" + odbc.mssql,
                            "execute Create Table SALES.dbo.APPLE (K_ID INT IDENTITY(1,1) NOT NULL)",
                            "execute " + std::string(kCustomerStatement), "disconnect",  //
                            "connect DSN=" + odbc.mssql, list, "disconnect"));
    EXPECT_THAT(
        odbc.Calls({"login", "connection", "query"}),
        ::testing::IsSupersetOf({"login timeout 600", "connection timeout 600", "query timeout 600"}));
}

TEST_F(SqlServer, WhatIsRefusedBeforeAnythingIsExecuted) {
    odbc.ScriptedSource("");
    AddCustomer(store);
    AddRecord(store, "EVIL", "X; DROP TABLE Y", "K");
    struct Case {
        std::string dsn, schema, database, words;
    };
    const Case cases[] = {
        {"", "SALES", "D", "You must select a DSN from the List Box above...."},
        {odbc.mssql, "", "D", "You must select a schema of the dictionary first."},
        {odbc.mssql, "SALES", "D;x", "the database name holds the character \";\""},
        {odbc.mssql, "EVIL", "D",
         "Nothing was created: the name of record X; DROP TABLE Y holds the character \";\""}};
    for (const auto& [dsn, schema, database, words] : cases) {
        Conversion conversion = NewConversion();
        conversion.dsn = dsn;
        EXPECT_FALSE(ConvertSchema(conversion, schema, database));
        EXPECT_EQ(conversion.refusal, words);
        EXPECT_EQ(status, words);
    }
    EXPECT_THAT(odbc.Calls(), ElementsAre());
}

TEST_F(SqlServer, AnEmptyDatabaseNameIsAskedFor) {
    odbc.ScriptedSource("");
    test.host.inputs = {"TYPED", std::nullopt};
    Conversion conversion = NewConversion();
    std::string name;
    EXPECT_TRUE(CreateDatabase(conversion, name));
    EXPECT_EQ(name, "TYPED");
    Conversion canceled = NewConversion();
    name.clear();
    EXPECT_FALSE(CreateDatabase(canceled, name));
    EXPECT_THAT(odbc.Calls({"execute CREATE"}), ElementsAre("execute CREATE DATABASE TYPED"));
}

TEST_F(SqlServer, ARefusalComesInTheServersWordsWithWhatWasCreated) {
    AddCustomer(store);
    AddRecord(store, "SALES", "APPLE", "K");
    odbc.ScriptedSource("on Create Table SALES.dbo.CUSTOMER\nerror 42S01 2714 There is already an object\n");
    Conversion table = NewConversion();
    EXPECT_FALSE(ConvertSchema(table, "SALES", "SALES"));
    EXPECT_EQ(table.refusal,
              "Record CUSTOMER: There is already an object (42S01) Created before: database SALES, APPLE.");
    EXPECT_EQ(status, table.refusal);
    EXPECT_FALSE(sql.gSqlConnected);

    odbc.ScriptedSource("on CREATE DATABASE\nerror 42000 1801 Database 'SALES' already exists\n");
    const auto before = odbc.Calls({"execute Create Table"}).size();
    Conversion database = NewConversion();
    EXPECT_FALSE(ConvertSchema(database, "SALES", "SALES"));
    EXPECT_EQ(database.refusal, "Database 'SALES' already exists (42000)");
    EXPECT_EQ(odbc.Calls({"execute Create Table"}).size(), before);
}

TEST_F(SqlServer, TablesAndFieldsByTheLiteralStatements) {
    odbc.ScriptedSource("on " + kListStatement +
                        "\ncolumn name 12\nrow Customer\nrow job\n"
                        "on SELECT * FROM JOB\ncolumn id 4\ncolumn _pay_ 2\ncolumn level -6 unsigned\n"
                        "column note -9\ncolumn made 93\nrows 5 0\n"
                        "on SELECT * FROM CUSTOMER\nerror 42S02 208 Invalid object name\n");
    const auto tables = TablesOf(sql, odbc.mssql);
    ASSERT_EQ(tables.size(), 2u);
    EXPECT_EQ(tables[0].shown, "CUSTOMER");
    EXPECT_EQ(tables[1].name, "job");
    std::vector<std::string> fields;
    for (const auto& field : FieldsOf(sql, tables[1])) fields.push_back(field.name + "|" + field.type);
    EXPECT_THAT(fields, ElementsAre("ID|INT", "_PAY_|DOUBLE", "LEVEL|CHAR(255)", "NOTE|VARCHAR(255)",
                                    "MADE|LONGTEXT"));
    EXPECT_THAT(odbc.Calls({"most rows"}), ElementsAre("most rows 1"));
    try {
        FieldsOf(sql, tables[0]);
        FAIL();
    } catch (const SqlFailure& failure) {
        EXPECT_EQ(FieldsFailureText(failure),
                  "During the process an error occured. err.nu : 208 err.des : Invalid object name (42S02)");
    }
    EXPECT_FALSE(sql.gSqlConnected);
}

TEST_F(SqlServer, AServerThatRefusesTheStatementIsAskedThroughItsDriver) {
    odbc.ScriptedSource(
        "on SELECT [name]\nerror 42000 1 syntax error at [\n"
        "on SQLTables\ncolumn cat 12\ncolumn schema 12\ncolumn name 12\ncolumn type 12\n"
        "row master|sales|Odd \"Name|TABLE\nrow master|\\N|plain|TABLE\n"
        "on SELECT * FROM \"sales\".\"Odd \"\"Name\"\ncolumn a 4\n");
    const auto tables = TablesOf(sql, odbc.mssql);
    ASSERT_EQ(tables.size(), 2u);
    EXPECT_EQ(tables[0].shown, "ODD \"NAME");
    EXPECT_EQ(tables[0].schema, "sales");
    EXPECT_EQ(tables[1].from, "\"plain\"");
    EXPECT_EQ(FieldsOf(sql, tables[0]).size(), 1u);
    EXPECT_THAT(odbc.Calls({"tables"}), ElementsAre("tables master TABLE"));
    EXPECT_THAT(ReadFile(test.folder.Path("INI/ProcessLog.Txt")), HasSubstr("syntax error at ["));
}

}  // namespace
}  // namespace norvelis
