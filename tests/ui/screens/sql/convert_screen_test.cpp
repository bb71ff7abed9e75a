#include <gmock/gmock.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "sqlconv/dictionary_rows.h"
#include "sqlconv/postgres_server.h"
#include "sqlconv/sql_connection.h"
#include "ui/screens/sql/eb_dsn_combo.h"
#include "ui/screens/sql/sql_screen.h"

namespace norvelis::ui {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string kList = "on SELECT [name]\ncolumn name 12\n";
constexpr auto kConnected = "Connecting to the SQL database succesfully...";

class ConvertScreen : public SqlScreen {
  protected:
    /// The screen over a dictionary with SALES, the server's source chosen.
    void OpenOn(const std::string& script) {
        odbc.ScriptedSource(script);
        AddCustomer(*ui.app.gConnection);
        AddRecord(*ui.app.gConnection, "SALES", "APPLE", "K");
        Open();
        Source().SetDSN(odbc.mssql);
    }
    void Open() { SqlScreen::Open(Screen::ConvertSql, "mnu_sql"); }
    EBDSNCombo& Source() const { return *In<EBDSNCombo>("cboDSN"); }
    void Convert(const char* database) {
        In<QLineEdit>("txtDBNameIDMS")->setText(database);
        Press("cmdCopyDB");
    }
};

TEST_F(ConvertScreen, ItOpensOnTheSourcesOfSqlServer) {
    OpenOn("");
    EXPECT_EQ(Words("loglbl"),
              "You must have a DSN connection to a SQL database. From ODBC create one on the System DSN.");
    EXPECT_EQ(Source().DriverFilter(), "SQL Server");
    EXPECT_EQ(Words("lblIDMSDB"), "SALES");
    EXPECT_THAT(Rows("FlxGrid3"), ElementsAre("APPLE", "CUSTOMER"));
    EXPECT_THAT(Rows("FlxGrid4"), ::testing::Not(IsEmpty()));
    EXPECT_THAT(ui.Log(),
                AllOf(HasSubstr("Entered form Formlistview....."), HasSubstr("Initialize load....")));
}

TEST_F(ConvertScreen, AClickOnAKindTurnsItOnOrOff) {
    Open();
    struct Step {
        const char *click, *chosen, *filter;
    };
    for (const auto& [click, chosen, filter] :
         {Step{"sqlExpress", "sqlExpress", "SQL Server Client 10.0"},
          Step{"sqlExpress", "Sql", "SQL Server Client"}, Step{"Sql", "sqlExpress", "SQL Server Client 10.0"},
          Step{"Sql", "Sql", "SQL Server"}, Step{"allSources", "allSources", ""},
          Step{"allSources", "Sql", "SQL Server"}}) {
        Press(click);
        EXPECT_EQ(Source().DriverFilter(), filter);
        for (const char* kind : {"Sql", "sqlExpress", "allSources"})
            EXPECT_EQ(In<QAbstractButton>(kind)->isChecked(), kind == std::string(chosen)) << click << kind;
    }
}

TEST_F(ConvertScreen, AFilterThatHidesAllSourcesSaysSoAndTheThirdChoiceIsRemembered) {
    odbc.SqliteSource();
    odbc.Source("OTHER", "Elsewhere");
    Open();
    EXPECT_THAT(Words("loglbl"), HasSubstr("2 data sources have other drivers than \"SQL Server\""));
    Press("allSources");
    Source().SetDSN(odbc.lite);
    Source().SetDSN("NONE OF THEM");
    EXPECT_EQ(Source().DSN(), odbc.lite);
    screen->close();
    ui.MakeFrame();
    ui.frame->Run([this] { commands::SubMain(ui.app, *ui.frame); });
    Open();
    EXPECT_TRUE(In<QAbstractButton>("allSources")->isChecked());
    EXPECT_EQ(Source().DSN(), odbc.lite);
    Source().SetDSN("");
    EXPECT_EQ(Source().DSN(), "");
}

TEST_F(ConvertScreen, ConnectShowsTheTablesAndLeavesTheServer) {
    OpenOn(kList +
           "row Customer\nrow job\non SELECT * FROM CUSTOMER\ncolumn id 4\n"
           "on SELECT * FROM JOB\ncolumn pay 2\ncolumn made 93\n");
    Source().SetDSN("");
    Press("cmdConnectDBmysql");
    EXPECT_EQ(Words("loglbl"), "You must select a DSN from the List Box above....");
    EXPECT_THAT(odbc.Calls(), IsEmpty());

    Source().SetDSN(odbc.mssql);
    Press("cmdConnectDBmysql");
    EXPECT_EQ(Words("loglbl"), kConnected);
    EXPECT_THAT(Rows("FlxGrid7"), ElementsAre("CUSTOMER", "JOB"));
    EXPECT_THAT(Rows("FlxGrid6"), ElementsAre("ID|INT"));
    EXPECT_THAT(ui.Log(), HasSubstr(std::string("Conversion ---- Connection ---- ") + kConnected));
    EXPECT_EQ(odbc.Calls({"connect "}).size(), 1u) << "one connection for the list and the first fields";
    ASSERT_FALSE(odbc.Calls().empty());
    EXPECT_EQ(odbc.Calls().back(), "disconnect");
    EXPECT_FALSE(In("cmdConnectDBmysql")->isEnabled());

    ClickRow("FlxGrid7", 1);
    EXPECT_THAT(Rows("FlxGrid6"), ElementsAre("PAY|DOUBLE", "MADE|LONGTEXT"));
    EXPECT_THAT(odbc.Calls({"connect ", "login", "query"}), ::testing::Contains("query timeout 600"));

    Press("cmdDisconnect");
    EXPECT_EQ(Words("loglbl"), "Disconnecting to the SQL database succesfully...");
    EXPECT_THAT(ui.Log(), HasSubstr("DisConnection ---- disConnecting to the SQL database succesfully..."));
    EXPECT_THAT(Rows("FlxGrid7"), IsEmpty());
    EXPECT_THAT(Rows("FlxGrid6"), IsEmpty());
    EXPECT_TRUE(In("cmdConnectDBmysql")->isEnabled());
    EXPECT_FALSE(In("cmdDisconnect")->isEnabled());
}

TEST_F(ConvertScreen, WhatAServerRefusesReachesThePerson) {
    OpenOn(kList + "row GONE\non SELECT * FROM GONE\nerror 42S02 208 Invalid object name\n");
    Press("cmdConnectDBmysql");
    EXPECT_THAT(
        ui.host.TakeTexts(),
        ElementsAre(
            "During the process an error occured. err.nu : 208 err.des : Invalid object name (42S02)"));
    EXPECT_EQ(Words("loglbl"), kConnected);
    Press("cmdDisconnect");

    WriteFile(odbc.Path("script"), "connect error 28000 18456 Login failed\n");
    Press("cmdConnectDBmysql");
    EXPECT_EQ(Words("loglbl"), "Login failed (28000)");
    EXPECT_TRUE(In("cmdConnectDBmysql")->isEnabled());
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
}

TEST_F(ConvertScreen, AConversionCreatesTheTablesAndShowsTheServersAgain) {
    OpenOn(kList);
    Convert(" SALES ");
    EXPECT_EQ(Words("loglbl"), kConnected);
    EXPECT_THAT(odbc.Calls({"execute C"}),
                ElementsAre("execute CREATE DATABASE SALES",
                            "execute Create Table SALES.dbo.APPLE (K_ID INT IDENTITY(1,1) NOT NULL)",
                            "execute " + std::string(kCustomerStatement)));
    EXPECT_EQ(ReadSetting(ui.app, "SQLdatabaseName")->value, "SALES");
    EXPECT_FALSE(ui.frame->Context().sql.gSqlConnected);
}

TEST_F(ConvertScreen, AConversionThatEndsEarlySaysWhatThereIs) {
    OpenOn(kList + "on Create Table SALES.dbo.CUSTOMER\nerror 42S01 2714 There is already an object\n");
    Convert("SALES");
    EXPECT_EQ(Words("loglbl"),
              "Record CUSTOMER: There is already an object (42S01) Created before: database SALES, APPLE.");
    EXPECT_FALSE(ReadSetting(ui.app, "SQLdatabaseName"));

    const std::size_t before = odbc.Calls().size();
    Convert("SALES;x");
    EXPECT_EQ(Words("loglbl"), "the database name holds the character \";\"");
    EXPECT_EQ(odbc.Calls().size(), before);
}

TEST_F(ConvertScreen, StatementsAreReadBeforeAnythingIsCreated) {
    OpenOn("");
    Press("cmdStatements");
    EXPECT_EQ(Words("loglbl"), "You must type the name of the new database first.");
    In<QLineEdit>("txtDBNameIDMS")->setText("My-Db");
    EXPECT_EQ(Words("lblTwoDatabases"),
              "\"CREATE DATABASE My-Db\" and \"Create Table My_Db.dbo.\" name two databases.");
    In<QLineEdit>("txtDBNameIDMS")->setText("SALES");
    EXPECT_TRUE(In("lblTwoDatabases")->isHidden());
    WhenWaiting([](QWidget& window) {
        auto* grid = window.findChild<QTableView*>("FlxGrid");
        EXPECT_EQ(grid->model()->rowCount(), 3);
        grid->setCurrentIndex(grid->model()->index(2, 0));
        EXPECT_EQ(window.findChild<QPlainTextEdit*>("txtStatement")->toPlainText().toStdString(),
                  kCustomerStatement);
        window.close();
    });
    Press("cmdStatements");
    EXPECT_THAT(odbc.Calls(), IsEmpty());
}

// The window shows report and script; the tables come once the person has asked for them there.
TEST_F(ConvertScreen, TypesKeysAndDialectOfTheServer) {
    odbc.SqliteSource();
    AddCustomer(*ui.app.gConnection);
    Open();
    EXPECT_FALSE(In<QAbstractButton>("chkKeepTables")->isChecked());
    Press("allSources");
    Source().SetDSN(odbc.lite);
    Press("chkKeepTables");
    const auto savedScript = odbc.Path("saved.sql");
    WhenWaiting([&](QWidget& window) {
        EXPECT_THAT(window.findChild<QLabel*>("lblTotals")->text().toStdString(),
                    HasSubstr("Schema SALES for SQLite: 1 of 1 records are tables"));
        EXPECT_EQ(window.findChild<QTableView*>("FlxGrid")->model()->index(0, 0).data().toString(), "look");
        EXPECT_THAT(window.findChild<QPlainTextEdit*>("txtScript")->toPlainText().toStdString(),
                    HasSubstr("CREATE TABLE customer ("));
        EXPECT_TRUE(window.findChild<QAbstractButton*>("cmdCreate")->isHidden());
        WhenWaiting([&savedScript](QWidget& waiting) {
            auto& dialog = dynamic_cast<QFileDialog&>(waiting);
            dialog.selectFile(QString::fromStdString(savedScript));
            static_cast<QDialog&>(dialog).done(QDialog::Accepted);
        });
        window.findChild<QAbstractButton*>("cmdSaveScript")->click();
        window.close();
    });
    In<QLineEdit>("txtDBNameIDMS")->setText("SALES");
    Press("cmdStatements");
    EXPECT_THAT(ReadFile(savedScript), HasSubstr("CREATE TABLE customer ("));
    const auto convert = [this](const char* button) {
        WhenWaiting([button](QWidget& window) {
            if (button == nullptr) return void(window.close());
            window.findChild<QAbstractButton*>(button)->click();
        });
        Press("cmdCopyDB");
    };
    convert(nullptr);
    EXPECT_TRUE(SqlConnection({odbc.lite, "", "", 0}).Tables().Next() == nullptr);
    convert("cmdCreate");
    EXPECT_EQ(Words("loglbl"), "IDMS conversion to SQL was successful. Created 1 tables.");
    EXPECT_THAT(Rows("FlxGrid7"), ElementsAre("CUSTOMER"));
    convert("cmdCreate");
    EXPECT_THAT(Words("loglbl"), HasSubstr("tables of these names: customer Nothing was created."));
    screen->close();
    ui.MakeFrame();
    ui.frame->Run([this] { commands::SubMain(ui.app, *ui.frame); });
    Open();
    EXPECT_TRUE(In<QAbstractButton>("chkKeepTables")->isChecked());
}

TEST_F(ConvertScreen, AConnectThatHangsIsGivenUp) {
    OpenOn("connect wait 3000\n");
    CancelWhen([this] { return !odbc.Calls({"connect "}).empty(); });
    Press("cmdConnectDBmysql");
    EXPECT_THAT(odbc.Calls({"disconnect"}), IsEmpty()) << "the connect has not ended";
    EXPECT_EQ(Words("loglbl"), "Connect was canceled.");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("Connect was canceled.")));
    ui.host.eachTurn = [] {};
    Press("cmdConnectDBmysql");
    EXPECT_THAT(Words("loglbl"), HasSubstr("has not ended yet"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !odbc.Calls({"disconnect"}).empty(); }, 30'000));
}

TEST_F(ConvertScreen, AStatementThatHangsIsLeftAndWhatWasCreatedIsSaid) {
    OpenOn(kList + "on Create Table SALES.dbo.CUSTOMER\nwait 60000\n");
    CancelWhen([this] { return !odbc.Calls({"execute Create Table SALES.dbo.CUSTOMER"}).empty(); });
    Convert("SALES");
    EXPECT_EQ(Words("loglbl"), "Convert to SQL was canceled.");
    EXPECT_THAT(
        ui.host.TakeTexts(),
        ElementsAre(AllOf(HasSubstr("Created before: database SALES, APPLE."),
                          EndsWith("The server may have executed the statement that was canceled."))));
    EXPECT_EQ(odbc.Calls({"cancel"}).size(), 1u);
    EXPECT_FALSE(ui.frame->Context().sql.gSqlConnected);
}

TEST_F(ConvertScreen, OfTablesThatAreClickedWhileOneIsAskedForTheLastIsShown) {
    OpenOn(kList +
           "row A\nrow B\nrow C\non SELECT * FROM A\ncolumn a 4\n"
           "on SELECT * FROM B\ncolumn b 4\nwait 300\non SELECT * FROM C\ncolumn c 4\n");
    Press("cmdConnectDBmysql");
    bool clicked = false;
    ui.host.eachTurn = [&] {
        if (clicked || odbc.Calls({"execute SELECT * FROM B"}).empty()) return;
        clicked = true;
        ClickRow("FlxGrid7", 0);
        ClickRow("FlxGrid7", 2);
    };
    ClickRow("FlxGrid7", 1);
    EXPECT_THAT(Rows("FlxGrid6"), ElementsAre("C|INT"));
    EXPECT_EQ(odbc.Calls({"execute SELECT * FROM A"}).size(), 1u) << "that of the connect";
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
}

TEST_F(ConvertScreen, OtherServersShowTheirTablesAndRefuseTheLiteralStatements) {
    const PostgresServer server;
    odbc.Source(odbc.pg, POSTGRES_DRIVER, server.Keys());
    odbc.SqliteSource();
    for (const auto& source : {odbc.pg, odbc.lite})
        SqlConnection({source, "", "", 0}).Execute("create table \"Mixed Case\" (id integer, made date)");
    AddCustomer(*ui.app.gConnection);
    Open();
    Press("allSources");
    for (const auto& [source, words] : {std::pair(odbc.pg, "syntax error at or near \"IDENTITY\""),
                                        std::pair(odbc.lite, "near \"DATABASE\"")}) {
        Source().SetDSN(source);
        Press("cmdConnectDBmysql");
        EXPECT_EQ(Words("loglbl"), kConnected);
        EXPECT_THAT(Rows("FlxGrid7"), ElementsAre("MIXED CASE"));
        EXPECT_THAT(Rows("FlxGrid6"), ElementsAre("ID|INT", "MADE|LONGTEXT"));
        EXPECT_THAT(Words("lblTable"), EndsWith("Mixed Case"));
        Convert("SALES");
        EXPECT_THAT(Words("loglbl"), HasSubstr(words));
        Press("cmdDisconnect");
    }
}

}  // namespace
}  // namespace norvelis::ui
