#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <fstream>

#include "testing/schema_rows.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/picture_controls.h"
#include "ui/screens/browse/frm_treeview.h"
#include "ui/ui_app.h"
#include "ui/until_rested.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class TreeScreenTest : public ::testing::Test {
  protected:
    UiApp ui;
    Form* screen = nullptr;
    cTreeView* Tview = nullptr;

    void Start() {
        ui.Start();
        screen = ui.frame->Find(Screen::Treeview);
        Tview = screen->findChild<cTreeView*>("Tview");
    }
    /// Two schemas: DEPT owns EMP and OFFICE, EMP owns SKILL, PLACE is alone; another DEPT in OTHER.
    void StartWithTwoSchemas() {
        SchemaRows(*ui.app.gConnection, "OTHER").Entry("DEPT-EMP");
        {
            SchemaRows rows(*ui.app.gConnection);
            rows.Entry("DEPT", "EMP,OFFICE,GONE");
            rows.Record("EMP", "SKILL");
            rows.Record("OFFICE");
            rows.Record("SKILL");
            rows.Entry("PLACE");
        }
        Start();
    }
    template <typename T>
    T* Control(const char* name) const {
        T* found = screen->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void Press(const char* button) {
        Control<SkinButton>(button)->click();
        UiApp::Settle();
    }
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (int i = 0; i < Tview->model()->rowCount(); ++i) {
            const NodeIndex node =
                dynamic_cast<RecordTreeModel*>(Tview->model())->NodeOf(Tview->model()->index(i, 0));
            lines.push_back(std::string(static_cast<std::size_t>(Tview->Tree().Level(node) - 1), ' ') +
                            Tview->Tree().Text(node));
        }
        return lines;
    }
    QModelIndex Line(const char* text, int which = 0) const {
        for (int i = 0; i < Tview->model()->rowCount(); ++i) {
            const QModelIndex index = Tview->model()->index(i, 0);
            if (index.data().toString() == text && which-- == 0) return index;
        }
        ADD_FAILURE() << "no line " << text;
        return {};
    }
    bool IsRed(const QModelIndex& index) const {
        return index.data(Qt::ForegroundRole).value<QColor>() == QColor(255, 0, 0);
    }
    QPoint PlaceOf(const QModelIndex& line) const {
        return Tview->visualRect(line).topLeft() + QPoint(110, 4);
    }
    void MoveTo(const QModelIndex& line) {
        const QPoint place = PlaceOf(line);
        QMouseEvent move(QEvent::MouseMove, place, Tview->viewport()->mapToGlobal(place), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(Tview->viewport(), &move);
    }
    /// The mouse comes to the line and stays there.
    void Hover(const QModelIndex& line) {
        MoveTo(line);
        UntilRested(*Tview->window());
    }
    void Click(const QModelIndex& line) {
        QTest::mouseClick(Tview->viewport(), Qt::LeftButton, {}, PlaceOf(line));
        UiApp::Settle();
    }
    Form* Isolate() const { return ui.frame->Find(Screen::IsolateView); }
    QString LabelOf(QWidget* tip, const char* name) const { return tip->findChild<QLabel*>(name)->text(); }
    /// A file in place of a drawing.
    QString Drawing(const std::string& schema, const std::string& name) {
        const std::string folder = ui.folder.Path("visio files/" + schema);
        std::filesystem::create_directories(folder);
        const std::string file = folder + "/" + name + ".vsd";
        WriteFile(file, "no drawing");
        return QString::fromStdString(file);
    }
};

TEST_F(TreeScreenTest, ControlsHaveTheirCaptionsAndToolTips) {
    Start();
    EXPECT_EQ(screen->windowTitle(), "RECORDS TREEVIEW");
    EXPECT_EQ(screen->size(), QSize(12750 / 15, 7650 / 15));
    const std::tuple<const char*, const char*, const char*> expected[] = {
        {"cmdMove0", "HM", "Go to Top of Treeview"},
        {"cmdMove1", "PUP", "Page Up"},
        {"cmdMove2", "UP", "Scroll 1 line up"},
        {"cmdMove3", "DN", "Scroll 1 line down"},
        {"cmdMove4", "PDN", "Page Down"},
        {"cmdMove5", "END", "Go to bottom of tree view"},
        {"Max", "MAXIMIZE", "View Larger Tree View"},
        {"Label1", "EDIT VIEW", "View larger IDMS diagram"},
        {"ExpandAll", "EXPAND", "Expand the Tree View"},
        {"CollapseAll", "COLLAPSE", "Compress  the Tree View"},
        {"cmdDraw", "DRAW DIAGRAM", "Draw IDMS schema in a single page"},
        {"cmdPrint", "PRINT", "Print the Diagram showing on the right"},
        {"cmdSearch", "SEARCH", "Click to search Record"},
        {"cmdRefresh", "REFRESH", "Click to Reload the Treev view"}};
    for (const auto& [name, caption, toolTip] : expected) {
        EXPECT_EQ(Control<SkinButton>(name)->text(), caption);
        EXPECT_EQ(Control<SkinButton>(name)->toolTip(), toolTip);
        EXPECT_FALSE(Control<SkinButton>(name)->visibleRegion().isEmpty()) << name;
    }
    auto* layouts = Control<QComboBox>("LayoutTypes");
    QStringList names;
    for (int i = 0; i < layouts->count(); ++i) names << layouts->itemText(i);
    EXPECT_EQ(names, QStringList({"-Default Layout-", "RadialDefault", "RadialRightAngle", "RadialSimpleVH",
                                  "TopToBottom", "LeftToRight", "CircularSimpleHV", "CircularDeep"}));
    EXPECT_EQ(layouts->currentIndex(), 0);
    EXPECT_EQ(Control<QLineEdit>("Text1")->text(), "TYPE HERE");
    EXPECT_THAT(ui.host.messages, IsEmpty()) << "filling the list of layouts draws nothing";
}

TEST_F(TreeScreenTest, LoadAndFillWriteTheirStepsToTheLog) {
    Start();
    const auto lines = [](const std::string& module, const std::vector<std::string>& steps) {
        std::string text;
        for (const std::string& step : steps)
            text += "11/24/2026 8:30:00 AM: " + module + " ---- " + step + "\r\n";
        return text;
    };
    EXPECT_THAT(
        ui.Log(),
        HasSubstr(lines("Form Treeview ---- Form_Load",
                        {"entering.....", "call InitializeTreeview.....", "In InitializeTreeview.....",
                         "Exiting InitializeTreeview.....", "Done InitializeTreeview.....",
                         "LoadINISettings.....", "Done LoadINISettings.....", "DrawingControl2.....",
                         "Done DrawingControl2.....", "DB check.....", "DB Found.....", "Done DB check.....",
                         "vbalProgressBar1.....", "call getvisiolocation....."})));
    EXPECT_THAT(ui.Log(),
                HasSubstr(lines("Form Treeview ---- Form_Load", {"Completed without errors....."})));
    EXPECT_THAT(
        ui.Log(),
        HasSubstr(lines("Treeview ---- loadtreeform",
                        {"Entered form treeview.....", "frm_Treeview.process_Refresh....", "Done...."})));
}

TEST_F(TreeScreenTest, AMissingStoreIsSaidAtLoadAndTheScreenStays) {
    ui.MakeFrame();
    std::filesystem::remove(ui.folder.Path("Database/records.mdb"));
    ui.host.OpenScreen(Screen::Treeview, false);
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Please locate and extract IDMS Report File."));
    EXPECT_THAT(ui.Log(), HasSubstr("DB missing....."));
    EXPECT_THAT(ui.Log(), HasSubstr("Completed without errors....."));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(ui.Find<cTreeView>("Tview")->Tree().Size(), 0u);
    EXPECT_TRUE(ui.frame->Find(Screen::Treeview)->isVisibleTo(ui.frame.get()));
}

TEST_F(TreeScreenTest, AnEmptyStoreGivesAnEmptyTreeAndNoMessage) {
    Start();
    EXPECT_THAT(Lines(), IsEmpty());
    for (const char* button : {"ExpandAll", "CollapseAll", "cmdRefresh", "cmdMove0", "cmdMove5"})
        Press(button);
    EXPECT_THAT(ui.host.messages, IsEmpty());
    EXPECT_THAT(ui.failures, IsEmpty());
}

TEST_F(TreeScreenTest, BranchesWithMembersComeUpOpen) {
    StartWithTwoSchemas();
    EXPECT_THAT(Lines(), ElementsAre("EMPSCHM", " DEPT", "  EMP", "   SKILL", "  OFFICE", " PLACE", "OTHER"));
    EXPECT_EQ(Tview->SelectedNode(), 0u);
    Press("ExpandAll");
    EXPECT_THAT(Lines(), ElementsAre("EMPSCHM", " DEPT", "  EMP", "   SKILL", "  OFFICE", " PLACE", "OTHER",
                                     " DEPT-EMP"));
    Press("CollapseAll");
    EXPECT_THAT(Lines(), ElementsAre("EMPSCHM", "OTHER"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(TreeScreenTest, ACycleOfSetsIsShownOnce) {
    {
        SchemaRows rows(*ui.app.gConnection);
        rows.Entry("EMP", "STRUCTURE");
        rows.Record("STRUCTURE", "EMP");
    }
    Start();
    EXPECT_THAT(Lines(), ElementsAre("EMPSCHM", " EMP", "  STRUCTURE", "   EMP"));
}

TEST_F(TreeScreenTest, AClickTurnsTheNodeRedAndIsolatesIt) {
    StartWithTwoSchemas();
    const QString drawing = Drawing("EMPSCHM", "EMP");
    Click(Line("EMP"));
    ASSERT_NE(Isolate(), nullptr);
    EXPECT_EQ(ui.frame->Area().Active(), Isolate());
    EXPECT_EQ(ui.app.gSchemaName, "EMPSCHM");
    EXPECT_TRUE(IsRed(Line("EMP")));
    auto* Tviewrec = Isolate()->findChild<cTreeView*>("Tviewrec");
    EXPECT_EQ(Tviewrec->Tree().Size(), 2u);
    EXPECT_EQ(Tviewrec->Tree().Text(1), "SKILL");
    EXPECT_EQ(Tviewrec->Tree().Key(0), Tview->Tree().Key(2));
    EXPECT_EQ(Isolate()->findChild<QLabel*>("Label1")->text(), "CURRENT RECORD: EMP");
    EXPECT_EQ(Isolate()->findChild<DrawingControl2*>("DrawingControl2")->Src(), drawing);
    Click(Line("OTHER"));
    EXPECT_EQ(Tviewrec->Tree().Size(), 2u);
    EXPECT_EQ(Tviewrec->Tree().Text(0), "OTHER") << "a schema opens whole";
    EXPECT_EQ(Isolate()->findChild<DrawingControl2*>("DrawingControl2")->Src(), "");
    Press("CollapseAll");
    Press("ExpandAll");
    EXPECT_TRUE(IsRed(Line("EMP")));
    Press("cmdRefresh");
    EXPECT_FALSE(IsRed(Line("EMP")));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(TreeScreenTest, ReturnIsAClickAndF5ARefresh) {
    StartWithTwoSchemas();
    Tview->setFocus();
    QTest::keyClick(Tview, Qt::Key_Down);
    QTest::keyClick(Tview, Qt::Key_Return);
    ASSERT_NE(Isolate(), nullptr);
    EXPECT_EQ(Isolate()->findChild<cTreeView*>("Tviewrec")->Tree().Text(0), "DEPT");
    QTest::keyClick(Isolate()->findChild<cTreeView*>("Tviewrec"), Qt::Key_Escape);
    UiApp::Settle();
    EXPECT_FALSE(Isolate()->isVisible());
    SchemaRows(*ui.app.gConnection, "LATER").Entry("NEW");
    Tview->setFocus();
    QTest::keyClick(Tview, Qt::Key_F5);
    EXPECT_EQ(Line("LATER").data().toString(), "LATER");
}

TEST_F(TreeScreenTest, TheMouseOverARecordTellsOfItAndShowsItsDrawing) {
    StartWithTwoSchemas();
    const QString drawing = Drawing("EMPSCHM", "DEPT");
    auto* tip = Control<QWidget>("frmToolTip");
    auto* drawings = Control<DrawingControl2>("DrawingControl2");
    Hover(Line("DEPT"));
    EXPECT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->pos(), screen->mapToGlobal(PlaceOf(Line("DEPT"))) + QPoint(1000 / 15, 1000 / 15));
    EXPECT_EQ(LabelOf(tip, "lblRecordname"), "DEPT");
    EXPECT_EQ(LabelOf(tip, "lbltableid"), "415");
    EXPECT_EQ(LabelOf(tip, "lblrecmode"), "CALC");
    EXPECT_EQ(LabelOf(tip, "lblreckey"), "EMP-ID-0415");
    EXPECT_EQ(LabelOf(tip, "lblreclen"), "116");
    EXPECT_EQ(LabelOf(tip, "lbldn"), "F");
    EXPECT_EQ(LabelOf(tip, "lblDN2"), "DN");
    EXPECT_EQ(LabelOf(tip, "lblareaname"), "EMP-REGION");
    EXPECT_EQ(drawings->Src(), drawing);
    Hover(Line("PLACE"));
    EXPECT_EQ(LabelOf(tip, "lblRecordname"), "PLACE");
    EXPECT_EQ(drawings->Src(), "") << "no drawing was saved for it";
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Tview, &leave);
    EXPECT_FALSE(tip->isVisible());
}

TEST_F(TreeScreenTest, TheMouseOverASchemaTellsOfIt) {
    StartWithTwoSchemas();
    ui.app.gConnection->Execute(
        "Insert into schema_details (schemaname, schemarelease, schemaversion, schemadate) values (?, ?, ?, "
        "?)",
        {"EMPSCHM", "18.5", "100 ", "03/14/24"});
    const QString drawing = Drawing("EMPSCHM", "EMPSCHM");
    Hover(Line("DEPT"));
    Hover(Line("EMPSCHM"));
    EXPECT_FALSE(Control<QWidget>("frmToolTip")->isVisible());
    auto* tip = Control<QWidget>("frmToolTip2");
    EXPECT_TRUE(tip->isVisible());
    EXPECT_EQ(LabelOf(tip, "lblRecordname"), "Schema Name: EMPSCHM");
    EXPECT_EQ(LabelOf(tip, "lblSchemaRelease"), "Release: 18.5");
    EXPECT_EQ(LabelOf(tip, "lblschemaVersion"), "Schema Version: 100");
    EXPECT_EQ(LabelOf(tip, "lblschemadate"), "Schema date: 03/14/24");
    EXPECT_EQ(Control<DrawingControl2>("DrawingControl2")->Src(), drawing);
    screen->close();
    EXPECT_FALSE(tip->isVisible());
}

TEST_F(TreeScreenTest, WhatTheMouseCrossesOnItsWayToAButtonIsNotPrinted) {
    StartWithTwoSchemas();
    const QString looked = Drawing("EMPSCHM", "DEPT"), crossed = Drawing("EMPSCHM", "EMP");
    auto* drawings = Control<DrawingControl2>("DrawingControl2");
    auto* name = Control<QLabel>("lblDrawing");
    EXPECT_EQ(name->text(), "");
    Hover(Line("DEPT"));
    EXPECT_EQ(name->text(), "EMPSCHM/DEPT.vsd");
    MoveTo(Line("EMP"));
    MoveTo(Line("OFFICE"));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Tview, &leave);
    UntilRested(*screen);
    EXPECT_EQ(drawings->Src(), looked);
    Hover(Line("OFFICE"));
    EXPECT_EQ(name->text(), "") << "nothing was drawn for it";
    Hover(Line("DEPT"));

    auto* print = Control<SkinButton>("cmdPrint");
    QTest::mousePress(print, Qt::LeftButton);
    drawings->SetSrc(crossed);
    EXPECT_EQ(name->text(), "EMPSCHM/EMP.vsd");
    QTest::mouseRelease(print, Qt::LeftButton);
    UiApp::Settle();
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre(StartsWith("This drawing can not be printed: " + looked.toStdString())));
    print->setFocus();
    QTest::keyClick(print, Qt::Key_Return);
    UiApp::Settle();
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre(StartsWith("This drawing can not be printed: " + crossed.toStdString())));
}

TEST_F(TreeScreenTest, TheStoreIsReadOnlyWhenTheMouseReachesAnotherText) {
    StartWithTwoSchemas();
    auto* tip = Control<QWidget>("frmToolTip");
    const auto rename = [&](const char* area) {
        ui.app.gConnection->Execute("Update Record_Details set areaname = ?", {area});
    };
    const std::string log = ui.Log();
    Hover(Line("EMP"));
    rename("CHANGED");
    Hover(Line("EMP"));
    EXPECT_EQ(LabelOf(tip, "lblareaname"), "EMP-REGION");
    Hover(Line("SKILL"));
    EXPECT_EQ(LabelOf(tip, "lblareaname"), "CHANGED");
    Hover(Line("EMP"));
    EXPECT_EQ(LabelOf(tip, "lblareaname"), "CHANGED");
    EXPECT_EQ(ui.Log(), log) << "a log is no place for every move of the mouse";
}

TEST_F(TreeScreenTest, AStoreThatVanishedLeavesTheScreensAsTheyWere) {
    StartWithTwoSchemas();
    Hover(Line("DEPT"));
    ui.app.gConnection->Close();
    Hover(Line("EMP"));
    EXPECT_EQ(LabelOf(Control<QWidget>("frmToolTip"), "lblRecordname"), "DEPT");
    Click(Line("EMP"));
    EXPECT_THAT(ui.host.messages, IsEmpty());
    Press("cmdRefresh");
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("the store is closed"))) << "from the error log";
    EXPECT_THAT(ui.failures, IsEmpty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(TreeScreenTest, AStoreWhoseFileWasRemovedIsNamed) {
    StartWithTwoSchemas();
    std::filesystem::remove(ui.folder.Path("Database/records.mdb"));
    Press("cmdRefresh");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("records.mdb: the file is not there any more")));
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(TreeScreenTest, AStoreThatWasOverwrittenIsSaidAndTheProgramGoesOn) {
    StartWithTwoSchemas();
    std::ofstream(ui.folder.Path("Database/records.mdb")) << std::string(8192, 'x');
    Hover(Line("EMP"));
    Click(Line("EMP"));
    EXPECT_THAT(ui.host.messages, IsEmpty()) << "a look-up that fails is passed over";
    Press("cmdRefresh");
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("the file is no dictionary store")));
    Press("cmdDraw");
    EXPECT_FALSE(ui.frame->Context().commands.Busy());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_THAT(ui.failures, IsEmpty());
}

TEST_F(TreeScreenTest, SearchStepsThroughEveryOccurrenceAndSaysTheEnd) {
    StartWithTwoSchemas();
    auto* text = Control<QLineEdit>("Text1");
    auto* button = Control<SkinButton>("cmdSearch");
    Press("cmdSearch");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Please type the record to locate"));
    QTest::keyClick(Tview, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(text->text(), "") << "the hint goes when the box gets the keyboard";
    QTest::keyClicks(text, "emp");
    EXPECT_EQ(text->text(), "EMP");
    Press("CollapseAll");
    const std::pair<const char*, const char*> hits[] = {
        {"EMPSCHM", "NEXT"}, {"EMP", "NEXT"}, {"DEPT-EMP", "NEXT"}};
    for (const auto& [node, caption] : hits) {
        QTest::keyClick(text, Qt::Key_Return);
        EXPECT_EQ(Tview->Tree().Text(Tview->SelectedNode()), node);
        EXPECT_TRUE(IsRed(Line(node)));
        EXPECT_EQ(button->text(), caption);
    }
    EXPECT_THAT(ui.host.messages, IsEmpty());
    QTest::keyClick(text, Qt::Key_Return);
    ASSERT_EQ(ui.host.messages.size(), 1u);
    EXPECT_EQ(ui.host.messages[0].title, "Search Results");
    EXPECT_EQ(ui.host.messages[0].text, "End of search for record: EMP");
    EXPECT_EQ(button->text(), "SEARCH");
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(button->text(), "NEXT");
    QTest::keyClick(text, Qt::Key_Backspace);
    EXPECT_EQ(button->text(), "SEARCH");
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_EQ(screen->focusWidget(), Tview);
}

TEST_F(TreeScreenTest, TheLargerTreeHasTheStoresOrderAndNoDrawing) {
    {
        SchemaRows rows(*ui.app.gConnection);
        rows.Entry("ZEBRA");
        rows.Entry("APE", "ZEBRA");
    }
    Start();
    Press("Max");
    Form* larger = ui.frame->Find(Screen::TreeviewMax);
    ASSERT_NE(larger, nullptr);
    EXPECT_EQ(larger->windowTitle(), "RECORDS TREEVIEW MAX");
    EXPECT_GT(larger->width(), screen->width());
    EXPECT_THAT(Lines(), ElementsAre("EMPSCHM", " APE", "  ZEBRA", " ZEBRA"));
    Tview = larger->findChild<cTreeView*>("Tview");
    EXPECT_THAT(Lines(), ElementsAre("EMPSCHM", " ZEBRA", " APE", "  ZEBRA"));
    for (const char* absent : {"DrawingControl2", "LayoutTypes", "cmdDraw", "cmdPrint", "Max", "Label1"})
        EXPECT_EQ(larger->findChild<QWidget*>(absent), nullptr) << absent;
    for (const char* present : {"Text1", "cmdSearch", "cmdRefresh", "ExpandAll", "CollapseAll", "cmdMove5"})
        EXPECT_NE(larger->findChild<QWidget*>(present), nullptr) << present;
    Hover(Line("APE"));
    EXPECT_TRUE(larger->findChild<QWidget*>("frmToolTip")->isVisible());
    Hover(Line("EMPSCHM"));
    EXPECT_FALSE(larger->findChild<QWidget*>("frmToolTip")->isVisible());
    EXPECT_FALSE(larger->findChild<QWidget*>("frmToolTip2")->isVisible());
    Click(Line("APE"));
    EXPECT_EQ(ui.frame->Area().Active(), Isolate());
    larger->close();
    SchemaRows(*ui.app.gConnection, "LATER").Entry("NEW");
    Press("Max");
    EXPECT_EQ(Line("LATER").data().toString(), "LATER") << "opened again it is filled again";
}

TEST_F(TreeScreenTest, WhileATreeLoadsTheOldOneIsGoneAndNoSecondLoadStarts) {
    {
        // Entries enough for many turns of the event loop, however fast the machine is.
        SchemaRows rows(*ui.app.gConnection);
        for (int entry = 0; entry < 6000; ++entry) rows.Entry("ENTRY-" + std::to_string(entry), "MEMBER");
        rows.Record("MEMBER");
    }
    Start();
    int turns = 0;
    QTimer inBetween;
    QObject::connect(&inBetween, &QTimer::timeout, [&] {
        if (!ui.frame->Context().commands.Busy() || Tview->Tree().Size() > 0) return;
        ++turns;
        EXPECT_FALSE(Control<SkinButton>("cmdRefresh")->isEnabled());
        QTest::mouseClick(Tview->viewport(), Qt::LeftButton, {}, QPoint(60, 30));
        QTest::keyClick(Tview, Qt::Key_F5);
        QTest::keyClick(Tview, Qt::Key_Return);
    });
    inBetween.start(0);
    Press("cmdRefresh");
    inBetween.stop();
    EXPECT_GT(turns, 0);
    EXPECT_EQ(Isolate(), nullptr) << "there was no node to click";
    EXPECT_EQ(Tview->Tree().Size(), 1 + 2 * 6000) << "the schema, its entries, a member below each";
}

TEST_F(TreeScreenTest, ABrokenDrawingIsShownAsSuchAndBothScreensGoOn) {
    StartWithTwoSchemas();
    const QString broken = Drawing("EMPSCHM", "EMP");
    Hover(Line("EMP"));
    EXPECT_EQ(Control<DrawingControl2>("DrawingControl2")->Src(), broken);
    Press("Label1");
    EXPECT_EQ(ui.frame->Find(Screen::DrawingViewer)->findChild<DrawingControl2*>()->Src(), broken);
    ui.frame->Find(Screen::DrawingViewer)->close();
    Press("cmdPrint");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre(StartsWith("This drawing can not be printed: " + broken.toStdString())));
    std::filesystem::remove_all(ui.folder.Path("visio files"));
    Press("cmdPrint");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("You must select and Draw a record diagram then PRINT it"));
    Hover(Line("DEPT"));
    EXPECT_EQ(Control<DrawingControl2>("DrawingControl2")->Src(), "");
    EXPECT_THAT(ui.failures, IsEmpty());
}

}  // namespace
}  // namespace norvelis::ui
