#include "sqlconv/table_procedures.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "ui/screens/sql/sql_screen.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TableProceduresScreen : public SqlScreen {
  protected:
    void SetUp() override {
        Open(Screen::TableProcedures, "mnu_TableProcedures");
        Type("txtdsnName", odbc.mssql);
        In<QPlainTextEdit>("txtSqlStatement")->setPlainText("SELECT");
    }
    void Type(const char* field, const std::string& text) {
        In<QLineEdit>(field)->setText(QString::fromStdString(text));
    }
    std::string Typed(const char* field) const { return In<QLineEdit>(field)->text().toStdString(); }
    void Choose(const char* name) {
        auto* Tprocs = In<QComboBox>("Tprocs");
        Tprocs->setCurrentText(name);
        emit Tprocs->activated(Tprocs->currentIndex());
    }
    std::vector<std::string> Names() { return ProcedureNames(*ui.app.gConnection); }
    int ShownRows() const { return In<QTableView>("FlxGrid")->model()->rowCount(); }
};

TEST_F(TableProceduresScreen, StatementsAreSavedChangedAndDeleted) {
    Press("Save");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("New Program name is blank"));
    Press("Update");
    Press("Delete");
    EXPECT_EQ(Words("lblStatus"), "No program is selected.");

    Type("txtProcName", "PAY");
    Type("txtUsername", "me");
    Press("Save");
    Press("Save");
    EXPECT_THAT(Names(), ElementsAre("PAY", "PAY"));
    Type("txtProcName", "JOB");
    Type("txtUsername", "you");
    Press("Save");
    Choose("PAY");
    EXPECT_EQ(Typed("txtUsername"), "me");
    EXPECT_EQ(Typed("txtPassword"), "");
    Type("txtdsnName", "X");
    Press("Update");
    EXPECT_EQ(FindProcedure(*ui.app.gConnection, "PAY")->dsn, "X");
    EXPECT_EQ(FindProcedure(*ui.app.gConnection, "JOB")->dsn, odbc.mssql);
    Press("Delete");
    EXPECT_THAT(Names(), ElementsAre("JOB"));
    EXPECT_EQ(In<QComboBox>("Tprocs")->count(), 1);
    EXPECT_EQ(Typed("txtdsnName"), "X") << "what was typed stays";
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
}

TEST_F(TableProceduresScreen, PasswordsAreKeptAndNeverShown) {
    EXPECT_EQ(In<QLineEdit>("txtPassword")->echoMode(), QLineEdit::Password);
    Type("txtProcName", "PAY");
    Type("txtdsnName", "DSN=A;PWD={se;cret}");
    Press("Save");
    Choose("PAY");
    EXPECT_EQ(Typed("txtdsnName"), "DSN=A;PWD=***");
    Type("txtdsnName", "DSN=B;PWD=***");
    Press("Update");
    EXPECT_EQ(FindProcedure(*ui.app.gConnection, "PAY")->dsn, "DSN=B;PWD={se;cret}");
    EXPECT_THAT(ui.Log(), ::testing::Not(HasSubstr("cret")));
}

TEST_F(TableProceduresScreen, RowsAreShownAsTheyAreAndFailuresSaySo) {
    odbc.ScriptedSource("on SELECT\ncolumn a|b 12\ncolumn c 12\nrow x| y\nrow |\\N\n");
    Press("Execute");
    auto* grid = In<QTableView>("FlxGrid");
    EXPECT_EQ(grid->model()->headerData(0, Qt::Horizontal).toString(), "a|b");
    EXPECT_THAT(Rows("FlxGrid"), ElementsAre(" x|  y", " |"));
    EXPECT_EQ(Words("lblStatus"), "2 rows.");
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());

    WriteFile(odbc.Path("script"), "on SELECT\nerror 42000 102 Incorrect syntax\n");
    Press("Execute");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(kExecuteError));
    EXPECT_EQ(Words("lblStatus"), "Incorrect syntax (42000)");
    EXPECT_EQ(ShownRows(), 2) << "the grid keeps what it had";
    WriteFile(odbc.Path("script"), "on SELECT\ncolumn n 4\n");
    Press("Execute");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(kExecuteError));
    EXPECT_EQ(ShownRows(), 0);
}

TEST_F(TableProceduresScreen, TheFirstRowsAreShownWhileOthersComeAndSortingWaitsForThem) {
    odbc.ScriptedSource("on SELECT\ncolumn n 4\nrows 150 10\n");
    std::size_t fetchedAtFirst = 0;
    ui.host.everyTurn = true;
    ui.host.eachTurn = [&] {
        if (fetchedAtFirst > 0 || ShownRows() == 0) return;
        fetchedAtFirst = odbc.Calls({"fetch"}).size();
        In<QTableView>("FlxGrid")->sortByColumn(0, Qt::DescendingOrder);
        EXPECT_EQ(Rows("FlxGrid").front(), " 1");
    };
    Press("Execute");
    EXPECT_GT(fetchedAtFirst, 0u);
    EXPECT_LT(fetchedAtFirst, 100u);
    EXPECT_EQ(ShownRows(), 150);
    EXPECT_EQ(Rows("FlxGrid").front(), " 150");
    EXPECT_EQ(Words("lblStatus"), "150 rows.");
}

TEST_F(TableProceduresScreen, ACanceledStatementLeavesTheRowsThatHadCome) {
    odbc.ScriptedSource("on SELECT\ncolumn n 4\nrows 100000 10\n");
    CancelWhen([this] { return ShownRows() > 3; });
    Press("Execute");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("Execute was canceled.\r\nThe rows that had come by then are shown."));
    EXPECT_GT(ShownRows(), 3);
    EXPECT_THAT(Words("lblStatus"), ::testing::StartsWith("Canceled after "));
    EXPECT_TRUE(In("Execute")->isEnabled());
}

}  // namespace
}  // namespace norvelis::ui
