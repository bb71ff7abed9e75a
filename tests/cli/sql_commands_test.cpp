#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/program.h"
#include "sqlconv/dictionary_rows.h"
#include "sqlconv/odbc_folder.h"

namespace norvelis {
namespace {

using nlohmann::json;

class SqlCommandsTest : public ::testing::Test {
  protected:
    std::shared_ptr<Connection> Store() const {
        return Connection::Open(ConnectionString(program.StorePath()));
    }
    void AddProcedure(const char* name, const char* statement, const std::string& dsn) const {
        Store()->Execute(
            "Insert into tableprocedures (tableprocname, tableprocsql, dsn, username, password) values "
            "(?, ?, ?, ?, ?)",
            {name, statement, dsn, "me", "hidden"});
    }

    const OdbcFolder odbc;
    const Program program;
};

TEST_F(SqlCommandsTest, SourcesTablesAndFields) {
    EXPECT_NE(program.Run("sql sources").error.find("no data sources"), std::string::npos);
    odbc.ScriptedSource(
        "on SELECT [name]\ncolumn name 12\nrow Job\n"
        "on SELECT * FROM JOB\ncolumn id 4\ncolumn title 12\n");
    const std::string dsn = " --dsn " + odbc.mssql;
    EXPECT_EQ(program.Run("sql sources").out, odbc.mssql + "\tSQL Server\n");
    EXPECT_EQ(json::parse(program.Run("sql sources --json").out)[0]["driver"], "SQL Server");
    EXPECT_EQ(program.Run("sql tables" + dsn).out, "JOB\n");
    EXPECT_EQ(program.Run("sql fields job" + dsn).out, "ID\tINT\nTITLE\tLONGTEXT\n");
    EXPECT_EQ(json::parse(program.Run("sql fields JOB --json" + dsn).out)[1]["number"], 200);
    const auto none = program.Run("sql fields \"x; drop table job\"" + dsn);
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.error, "norvelis-cli: there is no table x; drop table job in the data source\n");
}

TEST_F(SqlCommandsTest, ProceduresRunAndKeepTheirPasswords) {
    odbc.ScriptedSource("on SELECT\ncolumn a 12\ncolumn b 12\nrow x,y|\\N\nrow z|é\n");
    AddProcedure("JOBS", "SELECT", "DSN=" + odbc.mssql + ";PWD=secret");
    AddProcedure("NOTHING", "UPDATE", odbc.mssql);
    EXPECT_EQ(program.Run("sql procedures").out, "JOBS\nNOTHING\n");
    const auto listed = program.Run("sql procedures --json").out;
    EXPECT_EQ(listed.find("secret"), std::string::npos);
    EXPECT_EQ(listed.find("hidden"), std::string::npos);
    EXPECT_EQ(program.Run("sql run jobs").out, "a\tb\nx,y\t\nz\té\n");
    EXPECT_EQ(program.Run("sql run JOBS --csv").out, "a,b\n\"x,y\",\nz,é\n");
    const auto rows = json::parse(program.Run("sql run JOBS --json").out);
    EXPECT_TRUE(rows["rows"][0][1].is_null());
    EXPECT_EQ(rows["fields"], json({"a", "b"}));
    const auto limited = program.Run("sql run JOBS --limit 1");
    EXPECT_EQ(limited.out, "a\tb\nx,y\t\n");
    EXPECT_EQ(limited.error, "Stopped at the limit of 1; there are more rows.\n");
    const auto nothing = program.Run("sql run NOTHING --json");
    EXPECT_EQ(nothing.status, 1);
    EXPECT_EQ(
        nothing.error,
        "norvelis-cli: Execute Error Encountered. Fix the Select statement. The statement ran and gave no "
        "result set\n");
    EXPECT_EQ(program.Run("sql run MISSING").status, 1);
    EXPECT_EQ(program.Run("sql run JOBS --csv --json").status, 2);
}

TEST_F(SqlCommandsTest, StatementsArePrintedAndAConversionExecutesThem) {
    odbc.ScriptedSource("");
    AddCustomer(*Store());
    const std::string statements = "CREATE DATABASE SALES\n" + std::string(kCustomerStatement) + "\n";
    EXPECT_EQ(program.Run("sql statements sales --database ' SALES '").out, statements);
    EXPECT_TRUE(odbc.Calls().empty());
    EXPECT_EQ(program.Run("sql convert SALES --database SALES --dsn " + odbc.mssql).out,
              "Created database SALES with 1 tables.\n");
    std::string executed;
    for (const auto& call : odbc.Calls({"execute "})) executed += call.substr(8) + "\n";
    EXPECT_EQ(executed, statements);
    const auto refused = program.Run("sql convert SALES --database 'A;B' --dsn " + odbc.mssql);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.error, "norvelis-cli: the database name holds the character \";\"\n");
    EXPECT_EQ(program.Run("sql statements NONE --database D").status, 1);
    EXPECT_EQ(program.Run("sql statements SALES").status, 2);
}

TEST_F(SqlCommandsTest, AFieldTooManyEndsTheStatements) {
    const auto store = Store();
    AddCustomer(*store);
    AddRecord(*store, "SALES", "WIDE", "K");
    for (int i = 0; i < 151; ++i) AddField(*store, "SALES", "WIDE", "F", "9");
    const auto result = program.Run("sql statements SALES --database SALES");
    EXPECT_EQ(result.out, "CREATE DATABASE SALES\n" + std::string(kCustomerStatement) + "\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "norvelis-cli: Record WIDE: Run-time error '9': Subscript out of range\n");
}

TEST_F(SqlCommandsTest, ThePrintedHelpIsThatOfTheOtherProgram) {
    const auto help = program.Run("sql --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("statements"), std::string::npos);
    EXPECT_EQ(program.Run("sql").status, 2);
    std::filesystem::remove(program.App() + "/norvelis-sql");
    const auto missing = program.Run("sql sources");
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.error.find("norvelis-sql is missing"), std::string::npos);
}

}  // namespace
}  // namespace norvelis
