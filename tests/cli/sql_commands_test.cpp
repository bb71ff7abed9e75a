#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/program.h"
#include "sqlconv/dictionary_rows.h"
#include "sqlconv/odbc_folder.h"
#include "sqlconv/postgres_server.h"

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

TEST_F(SqlCommandsTest, TypesOfPicturesOnEachServer) {
    const std::string lines = R"({"picture": "X(4)     1", "usage": "DISPLAY", "start": 1}
{"usage": "GROUP"}
)";
    WriteFile(program.Path("lines"), lines);
    // In place of the empty input that the program gets otherwise.
    const std::string run = "sql types <" + program.Path("lines") + " 2>" + program.Path("stderr") + " #";
    const auto types = program.Run(run);
    std::istringstream stream(types.out);
    std::vector<std::string> found;
    for (std::string line; std::getline(stream, line);) {
        const json answer = json::parse(line);
        found.push_back(answer["dialect"].get<std::string>() + " " + answer["type"].get<std::string>());
    }
    EXPECT_EQ(found, (std::vector<std::string>{"postgresql VARCHAR(4)", "mysql VARCHAR(4)",
                                               "sqlserver VARCHAR(4)", "sqlite VARCHAR(4)", "postgresql ",
                                               "mysql ", "sqlserver ", "sqlite "}));
    WriteFile(program.Path("lines"), "{}\nno json\n");
    const auto refused = program.Run(run);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.error, "norvelis-cli: line 2 of standard input is no JSON object\n");
}

TEST_F(SqlCommandsTest, AScriptItsReportAndWhatIsNewSince) {
    AddCustomer(*Store());
    const auto script = program.Run("sql script sales --dialect PostgreSQL");
    EXPECT_NE(script.out.find("cust_num INTEGER,\n    cust_name VARCHAR(30),"), std::string::npos)
        << script.out;
    EXPECT_EQ(script.out, program.Run("sql script SALES --dialect postgresql").out);
    WriteFile(program.Path("options"), "[record CUSTOMER]\nname = clients\nnome = x\n");
    const auto wished = program.Run("sql script SALES --dialect sqlite --options " + program.Path("options") +
                                    " --out " + program.Path("out") + " --report " + program.Path("page"));
    EXPECT_EQ(wished.out, "");
    EXPECT_EQ(wished.error, program.Path("options") + " line 3: \"nome\" is no option of a record\n");
    EXPECT_NE(ReadFile(program.Path("out")).find("CREATE TABLE clients ("), std::string::npos);
    EXPECT_NE(ReadFile(program.Path("page")).find("<h2>Record CUSTOMER</h2>"), std::string::npos);
    const json report = json::parse(program.Run("sql script SALES --dialect mysql --json").out);
    EXPECT_EQ(report["totals"]["fields"]["all"], 3);
    EXPECT_EQ(report["totals"]["fields"]["converted"], 2);
    for (const auto& outcome : report["outcomes"])
        EXPECT_TRUE(outcome["became"] != "" || outcome["type"] == "") << outcome;
    const auto same = program.Run("sql script SALES --dialect sqlite --out " + program.Path("page") +
                                  " --report " + program.Path("page"));
    EXPECT_EQ(same.error, "norvelis-cli: --out and --report are the same file\n");

    WriteFile(program.Path("dump"), program.Run("dump").out);
    AddField(*Store(), "SALES", "CUSTOMER", "BIRTH", "9(8)");
    AddRecord(*Store(), "SALES", "STORE", std::nullopt);
    const auto since = program.Run("sql script SALES --dialect sqlserver --since " + program.Path("dump"));
    EXPECT_NE(since.out.find("ALTER TABLE customer ADD birth INTEGER;"), std::string::npos) << since.out;
    EXPECT_NE(since.out.find("CREATE TABLE store ("), std::string::npos);
    EXPECT_EQ(since.out.find("cust_num"), std::string::npos);
    Store()->Execute("Delete * FROM Record_layout where fieldname = 'CUST-NAME'");
    Store()->Execute("Update Record_layout set fieldpicture = 'X(9)' where fieldname = 'CUST-NUM'");
    const auto lost = program.Run("sql script SALES --dialect sqlite --since " + program.Path("dump"));
    EXPECT_NE(lost.out.find("-- Table customer: the column cust_num was INTEGER and is VARCHAR(9) now"),
              std::string::npos)
        << lost.out;
    EXPECT_NE(lost.out.find("-- Table customer: the column cust_name is no longer in the dictionary"),
              std::string::npos);
    EXPECT_EQ(program.Run("sql script SALES --dialect oracle").status, 1);
    EXPECT_EQ(program.Run("sql script NONE --dialect sqlite").status, 1);
    const std::string dump = program.Run("dump").out;
    AddCustomer(*Store(), "OTHER");
    WriteFile(program.Path("dump"), dump);
    EXPECT_EQ(program.Run("sql script OTHER --dialect sqlite --since " + program.Path("dump")).error,
              "norvelis-cli: the dump holds no schema OTHER\n");
    WriteFile(program.Path("dump"), "{}");
    EXPECT_EQ(program.Run("sql script SALES --dialect sqlite --since " + program.Path("dump")).error,
              "norvelis-cli: the file is not what the command dump prints\n");
}

TEST_F(SqlCommandsTest, TablesAreKeptInADatabaseOfTheirOwn) {
    const PostgresServer server;
    odbc.Source(odbc.pg, POSTGRES_DRIVER, server.Keys());
    odbc.ScriptedSource("on BEGIN\nerror 42000 1 no\n");
    AddCustomer(*Store());
    const std::string keep = "sql convert SALES --tables keep --dsn " + odbc.pg;
    EXPECT_EQ(program.Run(keep + " --database My-Db").out, "Created database My-Db with 1 tables.\n");
    EXPECT_EQ(program.Run("sql tables --dsn 'DSN=" + odbc.pg + ";Database=My-Db'").out, "CUSTOMER\n");
    EXPECT_EQ(program.Run(keep + " --no-create-database").out, "Created 1 tables.\n");
    EXPECT_EQ(program.Run(keep + " --no-create-database").error,
              "norvelis-cli: The data source has tables of these names: customer Nothing was created.\n");
    EXPECT_EQ(program.Run(keep + " --no-create-database --if-exists replace").status, 0);
    EXPECT_EQ(program.Run(keep).status, 2);
    const auto refused =
        program.Run("sql convert SALES --tables keep --no-create-database --dsn " + odbc.mssql);
    EXPECT_EQ(refused.error, "norvelis-cli: no (42000) Nothing was created.\n");
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
