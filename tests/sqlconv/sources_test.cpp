#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sqlconv/data_sources.h"
#include "sqlconv/diagnostics.h"
#include "sqlconv/odbc_folder.h"
#include "sqlconv/sql_connection.h"

namespace norvelis {
namespace {

std::vector<std::string> Names(const DataSourceList& list) {
    std::vector<std::string> names;
    for (const auto& source : list.shown) names.push_back(source.name);
    return names;
}

TEST(Sources, AreThoseOfExactlyTheDriverThatIsAskedFor) {
    const OdbcFolder odbc;
    EXPECT_EQ(Names(DataSources()), std::vector<std::string>());
    odbc.Source("PAY", "SQL Server");
    odbc.Source("HR", "SQL Server Client 10.0");
    odbc.Source("OLD", "sql server");
    EXPECT_THAT(Names(DataSources()), ::testing::UnorderedElementsAre("PAY", "HR", "OLD"));
    const auto filtered = DataSources(DriverFilterFor(ServerKind::Sql, true));
    EXPECT_THAT(Names(filtered), ::testing::ElementsAre("PAY"));
    EXPECT_EQ(filtered.shown[0].driver, "SQL Server");
    EXPECT_EQ(filtered.hidden, 2u);
    const auto none = DataSources(DriverFilterFor(ServerKind::SqlExpress, false));
    EXPECT_TRUE(none.shown.empty());
    EXPECT_EQ(none.hidden, 3u);
}

TEST(Sources, ADriversFileIsFoundByPathAndByName) {
    const OdbcFolder odbc;
    EXPECT_EQ(DriverFile("lite"), SQLITE_DRIVER);
    EXPECT_EQ(DriverFile("/x/y.so"), "/x/y.so");
    EXPECT_EQ(DriverFile("Nothing"), "");
}

std::string Refusal(const ConnectRequest& request) {
    try {
        SqlConnection connection(request);
    } catch (const SqlFailure& failure) {
        return failure.what();
    }
    return "connected";
}

TEST(Sources, TroubleComesInTheDriverManagersWords) {
    const OdbcFolder odbc;
    odbc.Source("GONE", "/nowhere/driver.so");
    EXPECT_THAT(Refusal({"NONE", "", "", 0}), ::testing::HasSubstr("IM002"));
    EXPECT_THAT(Refusal({"GONE", "", "", 0}), ::testing::HasSubstr("/nowhere/driver.so"));
    EXPECT_EQ(Refusal({" ", "", "", 0}), "No data source is named");
    EXPECT_EQ(Refusal({"DSN=" + std::string(40000, 'x'), "", "", 0}), "The connection text is too long");
    // An odbc.ini that is no text at all has no sources.
    odbc.SetSources(std::string(5000, '\xFF'));
    EXPECT_TRUE(DataSources().shown.empty());
}

TEST(Sources, OfTwoOfOneNameTheFirstIsTaken) {
    const OdbcFolder odbc;
    odbc.ScriptedSource("");
    odbc.Source(odbc.mssql, "/nowhere/driver.so");
    EXPECT_EQ(Refusal({odbc.mssql, "", "", 0}), "connected");
}

TEST(Sources, APasswordThatADriverRepeatsIsNotShown) {
    const OdbcFolder odbc;
    odbc.ScriptedSource("connect error 28000 18456 Login failed with PWD=top;secret\n");
    EXPECT_EQ(Refusal({odbc.mssql, "me", "top;secret", 0}), "Login failed with PWD=*** (28000)");
}

TEST(Sources, ADiagnosticIsShownInTwoLines) {
    EXPECT_EQ(OdbcErrorText({"08001", 17, "no server"}), "ODBC Error 08001\r\n17 : no server");
}

}  // namespace
}  // namespace norvelis
