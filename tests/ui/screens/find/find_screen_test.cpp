#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <set>

#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/screens/viewers/report_view.h"
#include "ui/ui_app.h"
#include "ui/until_shown.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Finding in the dictionary of the sample report, by keys alone.
class FindScreenTest : public ::testing::Test {
  protected:
    UiApp ui;

    void SetUp() override {
        ui.Start();
        ui.Choose("mnu_Classic_Extract_Report");
        ui.host.messages.clear();
    }
    Form* Screen_() const { return ui.frame->Find(Screen::Find); }
    template <typename T>
    T& On(Screen screen, const char* name) const {
        return *ui.frame->Find(screen)->findChild<T*>(name);
    }
    bool IsActive(Screen screen) const {
        return ui.frame->Find(screen) && ui.frame->Area().Active() == ui.frame->Find(screen);
    }
    QLineEdit& Box() const { return On<QLineEdit>(Screen::Find, "txtFind"); }
    /// Ctrl+K, and a name in place of what was typed before.
    void Type(const QString& text) {
        ui.Choose("mnu_Find");
        ASSERT_TRUE(IsActive(Screen::Find));
        ASSERT_EQ(QApplication::focusWidget(), &Box());
        QTest::keyClicks(&Box(), text);
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Box(), key, modifiers);
        UiApp::Settle();
    }
    std::string Row(int row) const {
        const auto* model = On<QTableView>(Screen::Find, "FlxGrid").model();
        std::string line;
        for (int column = 0; column < model->columnCount(); ++column)
            line += (column > 0 ? "|" : "") + model->index(row, column).data().toString().toStdString();
        return line;
    }
    int Rows() const { return On<QTableView>(Screen::Find, "FlxGrid").model()->rowCount(); }
    std::string Count() const { return On<QLabel>(Screen::Find, "lblCount").text().toStdString(); }
    std::string Node() const {
        const auto& tree = On<cTreeView>(Screen::Treeview, "Tview");
        const NodeIndex node = tree.SelectedNode();
        const NodeIndex parent = tree.Tree().Parent(node);
        return (parent == kNoNode ? "" : tree.Tree().Text(parent) + " > ") + tree.Tree().Text(node);
    }
    std::string MarkedLine() const {
        const auto& view = On<ReportView>(Screen::ReportViewer, "RichTextBox1");
        return view.HasMarked() ? std::to_string(view.MarkedFrom().line + 1) : "none";
    }
};

TEST_F(FindScreenTest, ListsWhileOneTypesAndReturnGoesThere) {
    Type("maker");
    EXPECT_EQ(Row(0), "record|MAKER||EMPSCHM");
    EXPECT_THAT(Count(), HasSubstr(" found"));
    Press(Qt::Key_Return);
    EXPECT_TRUE(IsActive(Screen::Treeview));
    EXPECT_FALSE(Screen_()->isVisible());
    EXPECT_EQ(Node(), "EMPSCHM > MAKER");

    Type("set:maker-steps");
    EXPECT_EQ(Row(0), "set|MAKER-STEPS|MAKER > BUILD-STEP|EMPSCHM");
    Press(Qt::Key_Return);
    EXPECT_EQ(Node(), "MAKER > BUILD-STEP");

    Type("field:maker-grade");
    EXPECT_EQ(Rows(), 1);
    Press(Qt::Key_Return);
    EXPECT_TRUE(IsActive(Screen::Listview));
    EXPECT_EQ(On<QLabel>(Screen::Listview, "lblRecordname").text(), "MAKER");
    const auto& fields = On<QTableView>(Screen::Listview, "flxgrid5");
    EXPECT_EQ(fields.currentIndex().siblingAtColumn(1).data().toString(), " MAKER-GRADE-0105");
    EXPECT_TRUE(fields.hasFocus());

    Type("");
    EXPECT_EQ(Box().selectedText(), "field:maker-grade") << "ready to be typed over";
    Press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Node(), "EMPSCHM > MAKER");
}

TEST_F(FindScreenTest, LeadsToTheLinesOfTheReport) {
    for (const auto& [typed, line] :
         {std::pair("field:SHOP-CODE-0101", "22"), std::pair("set:SHOP-STAFF", "337"),
          std::pair("index:CLIENT-NAME", "415"), std::pair("schema:EMP", "1")}) {
        Type(typed);
        Press(Qt::Key_Return, Qt::ShiftModifier);
        ASSERT_TRUE(IsActive(Screen::ReportViewer)) << typed;
        const auto arrived = [&] { return MarkedLine() == line; };
        EXPECT_TRUE(QTest::qWaitFor(arrived, 60'000)) << typed << " is on " << MarkedLine();
    }
    ui.app.gConnection->Execute("Update Record_Details set schemaname = 'OTHER' where Recordname = 'MAKER'");
    Type("record:maker");
    Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre(HasSubstr("is of schema EMPSCHM. Set the report of schema OTHER")));
}

TEST_F(FindScreenTest, ArrowsMoveTheMarkAndWhereUsedListsRecords) {
    Type("field:filler");
    const std::string second = Row(1);
    Press(Qt::Key_Down);
    EXPECT_TRUE(Box().hasFocus());
    EXPECT_EQ(On<QTableView>(Screen::Find, "FlxGrid").currentIndex().row(), 1);
    EXPECT_THAT(second, StartsWith("field|FILLER|"));
    Box().setText("code-0101");
    const int all = Rows();
    On<QCheckBox>(Screen::Find, "chkWhereUsed").click();
    EXPECT_EQ(Row(0), "field|SHOP-CODE-0101|WORKSHOP|EMPSCHM");
    EXPECT_LE(Rows(), all);
    Box().setText("shop");
    EXPECT_EQ(Rows(), 0);
    EXPECT_EQ(Count(), "No field has a name that is shop or ends so");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Screen_()->isVisible());
}

TEST_F(FindScreenTest, WhatHasGoneMeanwhileIsSaid) {
    Type("record:maker");
    ui.app.gConnection->Execute("Delete * FROM Record_Details where Recordname = 'MAKER'");
    Press(Qt::Key_Return);
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre(StartsWith("The dictionary has no record MAKER in schema EMPSCHM")));
    EXPECT_TRUE(IsActive(Screen::Find));
    EXPECT_EQ(Rows(), 0) << "the list is as the dictionary is now";

    Box().setText("client");
    ASSERT_GT(Rows(), 0);
    ui.app.gConnection->Execute("Delete * FROM Record_Details");
    ui.frame->Context().commands.Run({"Nothing", Screen::Treeview}, [] {});
    EXPECT_THAT(Row(0), ::testing::Not(StartsWith("record"))) << "read again behind a command";
}

TEST_F(FindScreenTest, ARecordThatNoSetLeadsToIsShownInTheList) {
    ui.app.gConnection->Execute(
        "Insert into Record_Details (schemaname, Recordname, recordtype) values ('EMPSCHM', 'ALONE', "
        "'Record')");
    Type("alone");
    Press(Qt::Key_Return);
    EXPECT_TRUE(IsActive(Screen::Listview));
    EXPECT_EQ(On<QLabel>(Screen::Listview, "lblRecordname").text(), "ALONE");
}

TEST_F(FindScreenTest, TheDrawingBesideTheTreeShowsIt) {
    ui.Choose("mnu_Draw_Fancy_Single");
    On<DrawingControl2>(Screen::Treeview, "DrawingControl2").SetSrc({});
    Type("record:supplier");
    Press(Qt::Key_Return);
    const auto& drawing = On<DrawingControl2>(Screen::Treeview, "DrawingControl2");
    UntilShown(drawing);
    EXPECT_TRUE(drawing.Src().endsWith("EMPSCHM.vsd"));
    EXPECT_EQ(drawing.SelectedShape(), "SUPPLIER");
    std::set<QString> lines;
    for (const int hit : {0, 1}) {  // The two members of INSTR-HISTORY have a line each.
        Type("set:instr-history");
        for (int down = 0; down < hit; ++down) Press(Qt::Key_Down);
        Press(Qt::Key_Return);
        EXPECT_TRUE(drawing.SelectedShape().startsWith("Dynamic connector"));
        lines.insert(drawing.SelectedShape());
    }
    EXPECT_EQ(lines.size(), 2u);
    Type("set:model-builds-ix");
    Press(Qt::Key_Return);
    EXPECT_TRUE(drawing.SelectedShape().startsWith("Dynamic connector")) << "and not the note of that name";
}

}  // namespace
}  // namespace norvelis::ui
