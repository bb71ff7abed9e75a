#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sqlconv/odbc_folder.h"
#include "sqlconv/table_procedures.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(Procedures, AreSavedRewrittenAndDeletedByName) {
    TestApp test;
    Connection& store = *test.app.gConnection;
    SaveProcedure(store, {"SECOND", "select 2", "D", "U", "P"});
    SaveProcedure(store, {"FIRST", "select 'it''s'", "DSN=x;A=b", "", ""});
    SaveProcedure(store, {"SECOND", "select 3", "D3", "U", "P"});
    EXPECT_THAT(ProcedureNames(store), ElementsAre("SECOND", "FIRST", "SECOND"));
    EXPECT_EQ(FindProcedure(store, "FIRST")->sql, "select 'it''s'");
    EXPECT_EQ(FindProcedure(store, "SECOND")->dsn, "D");
    UpdateProcedure(store, {"SECOND", "select 22", "D2", "U2", "P2"});
    UpdateProcedure(store, {"NOBODY", "x", "x", "x", "x"});
    EXPECT_EQ(FindProcedure(store, "SECOND")->password, "P2");
    DeleteProcedure(store, "SECOND");
    EXPECT_THAT(ProcedureNames(store), ElementsAre("FIRST"));
    store.Execute("Insert into tableprocedures (tableprocname) values (?)", {"BARE"});
    EXPECT_EQ(FindProcedure(store, "BARE")->username, " ");
    EXPECT_FALSE(FindProcedure(store, "GONE"));

    store.Close();
    EXPECT_TRUE(ProcedureNames(store).empty());
    SaveProcedure(store, {"LATE", "", "", "", ""});
}

class ProcedureRuns : public ::testing::Test {
  protected:
    /// What a run hands over, as CSV, and behind it the failure, if any.
    std::string Run(const TableProcedure& procedure) {
        std::string csv;
        try {
            Execute(connector, {}, procedure,
                    {[&](const auto& fields) {
                         for (const auto& field : fields) csv += field.name + ";";
                         csv += "\n";
                     },
                     [&](const auto& row) { csv += CsvLine(row); }});
        } catch (const SqlFailure& failure) {
            csv += failure.what();
        }
        return csv;
    }

    OdbcFolder odbc;
    Connector connector;
};

TEST_F(ProcedureRuns, LoginAndTextReachTheDriver) {
    odbc.ScriptedSource("on SELECT\ncolumn a 12\ncolumn b 12\nrow x,y|\\N\nrow |\"\n");
    EXPECT_EQ(Run({"P", "SELECT", odbc.mssql, "me", "a;b"}), "a;b;\n\"x,y\",\n\"\",\"\"\"\"\n");
    EXPECT_EQ(Run({"P", "SELECT", "Driver={SQL Server};UID=old", " ", " "}).substr(0, 5), "a;b;\n");
    EXPECT_THAT(odbc.Calls({"connect "}), ElementsAre("connect DSN=" + odbc.mssql + ";UID=me;PWD={a;b}",
                                                      "connect Driver={SQL Server};UID=old"));
}

TEST_F(ProcedureRuns, NoRowsAndNoResultAreFailures) {
    odbc.ScriptedSource("on SELECT\ncolumn a 12\n");
    EXPECT_EQ(Run({"P", "SELECT", odbc.mssql, "", ""}), "a;\nThe statement gave no rows");
    EXPECT_EQ(Run({"P", "UPDATE", odbc.mssql, "", ""}), "The statement ran and gave no result set");
}

TEST(Values, LongOnesAreCutOnScreen) {
    std::string text;
    for (int i = 0; i < 10'000; ++i) text += "\xC3\xA9";
    EXPECT_EQ(ShownValue(text), text);
    EXPECT_EQ(ShownValue(text + "xy"), text + "... (10002 characters)");
}

}  // namespace
}  // namespace norvelis
