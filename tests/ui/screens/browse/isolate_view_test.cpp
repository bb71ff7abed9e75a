#include <gmock/gmock.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QTableView>

#include "drawing/render/open.h"
#include "testing/schema_rows.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/drawing_panel.h"
#include "ui/screens/browse/frm_isolateview.h"
#include "ui/screens/browse/screen_drawing.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The sample report in the store, INSTRUMENT isolated: it owns BUILD-STEP and REPAIR.
class IsolateViewTest : public ::testing::Test {
  protected:
    UiApp ui;
    frm_IsolateView* screen = nullptr;
    cTreeView* Tviewrec = nullptr;
    DrawingControl2* drawing = nullptr;
    QLabel* Label1 = nullptr;

    void SetUp() override {
        ui.Start();
        ui.Choose("mnu_Classic_Extract_Report");
        ui.host.messages.clear();
        Isolate("INSTRUMENT");
    }
    void Isolate(const char* text) {
        auto* tree = ui.Find<cTreeView>("Tview");
        emit tree->NodeClicked(tree->Tree().FirstOf(text));
        UiApp::Settle();
        screen = qobject_cast<frm_IsolateView*>(ui.frame->Find(Screen::IsolateView));
        Tviewrec = screen->findChild<cTreeView*>("Tviewrec");
        drawing = screen->findChild<DrawingControl2*>("DrawingControl2");
        Label1 = screen->findChild<QLabel*>("Label1");
    }
    void Press(const char* button) {
        screen->findChild<SkinButton*>(button)->click();
        UiApp::Settle();
    }
    std::vector<std::string> Column(const char* grid, int column) const {
        const QAbstractItemModel* model = screen->findChild<QTableView*>(grid)->model();
        std::vector<std::string> cells{
            model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString()};
        for (int row = 0; row < model->rowCount(); ++row)
            cells.push_back(model->index(row, column).data().toString().toStdString());
        return cells;
    }
    std::string DrawingFile(const std::string& record) const {
        return ui.folder.Path("visio files/EMPSCHM/" + record + ".vsd");
    }
    static int ShapesIn(const std::string& file) {
        return static_cast<int>(drawing::render::OpenPages(file).front().figures.size());
    }
};

TEST_F(IsolateViewTest, ShowsTheRecordItsMembersItsDetailsAndItsLayout) {
    EXPECT_EQ(screen->windowTitle(), "RECORDS LEVEL ISOLATION");
    EXPECT_EQ(screen->size(), QSize(850, 510));
    EXPECT_EQ(Label1->text(), "CURRENT RECORD: INSTRUMENT");
    EXPECT_EQ(Tviewrec->model()->rowCount(), 3);
    EXPECT_EQ(Tviewrec->SelectedNode(), 0u);
    EXPECT_EQ(drawing->Src(), "");
    EXPECT_EQ(screen->findChild<QTableView*>("FlxGrid")->toolTip(), "Record Details");
    EXPECT_EQ(screen->findChild<QTableView*>("FlxGrid2")->toolTip(), "Record Layout");
    EXPECT_THAT(Column("FlxGrid", 0),
                ElementsAre("RECORD ITEM", "RECORD NAME", "TABLE ID", "RECORD MODE", "RECORD KEY",
                            "RECORD TYPE", "RECORD LENGTH", "", "", "INDEX(S)"));
    EXPECT_THAT(
        Column("FlxGrid", 1),
        ElementsAre("RECORD VALUE", " INSTRUMENT", " 0310", " CALC", " INSTR-SERIAL-0310", " FIXED", " 184",
                    " INSTR-SERIAL-0310 ASC", " INSTR-FINISHED-0310 DSC", " MODEL-BUILDS-IX"));
    const auto names = Column("FlxGrid2", 1);
    EXPECT_EQ(names.size(), 1u + 30);
    EXPECT_EQ(names[1], " INSTR-SERIAL-0310");
    EXPECT_EQ(names.back(), " ");
    EXPECT_EQ(Column("FlxGrid2", 5)[0], "OCCUR COUNT");
    for (const char* button : {"cmdDraw", "cmdPrint", "cmdEdit", "cmdApplyLayout"})
        EXPECT_FALSE(screen->findChild<SkinButton*>(button)->visibleRegion().isEmpty()) << button;
}

TEST_F(IsolateViewTest, EveryOtherRowIsTintedFromTheFirstOn) {
    const QAbstractItemModel* model = screen->findChild<QTableView*>("FlxGrid")->model();
    const QVariant tint = model->index(0, 0).data(Qt::BackgroundRole);
    EXPECT_TRUE(tint.isValid());
    EXPECT_FALSE(model->index(1, 0).data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(model->index(2, 1).data(Qt::BackgroundRole), tint);
}

TEST_F(IsolateViewTest, AClickInItsTreeShowsThatRecordButTheRootStays) {
    emit Tviewrec->NodeClicked(2);
    EXPECT_EQ(Label1->text(), "CURRENT RECORD: REPAIR");
    EXPECT_THAT(Column("FlxGrid", 1), Contains(" VIA"));
    emit Tviewrec->NodeClicked(0);
    EXPECT_EQ(Label1->text(), "CURRENT RECORD: REPAIR") << "the root is not loaded over itself";
    Isolate("EMPSCHM");
    EXPECT_EQ(Label1->text(), "CURRENT RECORD: REPAIR") << "a schema is no record";
    EXPECT_GT(Tviewrec->model()->rowCount(), 14);
}

TEST_F(IsolateViewTest, DrawsItsRecordsAndShowsTheDrawing) {
    std::vector<QString> texts;
    Press("cmdDraw");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Want to View While Norvelis is drawing"));
    EXPECT_EQ(Label1->text(), "Done..");
    EXPECT_EQ(drawing->Src().toStdString(), DrawingFile("INSTRUMENT"));
    const int withMembers = ShapesIn(DrawingFile("INSTRUMENT"));
    Isolate("REPAIR");
    Press("cmdDraw");
    EXPECT_LT(ShapesIn(DrawingFile("REPAIR")), withMembers);
    EXPECT_FALSE(FolderExists(ui.folder.Path("Temp"))) << "the snapshots are gone";
    Isolate("INSTRUMENT");
    EXPECT_EQ(drawing->Src().toStdString(), DrawingFile("INSTRUMENT")) << "a saved drawing shows at once";
    emit Tviewrec->NodeClicked(1);
    EXPECT_EQ(drawing->Src(), "") << "none was saved for BUILD-STEP";
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(IsolateViewTest, DrawsAroundARecordOrItsAreaIntoFilesOfTheirOwn) {
    const auto choose = [](const QWidget& control, const char* caption) {
        for (QAction* action : control.actions()) {
            if (action->text() == caption) action->trigger();
        }
        UiApp::Settle();
    };
    Press("cmdDraw");
    ui.host.messages.clear();
    const std::string own = ReadFile(DrawingFile("INSTRUMENT"));
    Tviewrec->Select(0);
    choose(*Tviewrec, "Draw arou&nd");
    EXPECT_EQ(drawing->Src().toStdString(), DrawingFile("EMPSCHM around INSTRUMENT"));
    EXPECT_EQ(ReadFile(DrawingFile("INSTRUMENT")), own);

    auto* tree = ui.Find<cTreeView>("Tview");
    tree->SelectRecord("CLIENT");
    choose(*tree, "Draw i&ts area");
    const auto* ofTree = ui.frame->Find(Screen::Treeview)->findChild<DrawingControl2*>("DrawingControl2");
    EXPECT_EQ(ofTree->Src().toStdString(), DrawingFile("EMPSCHM area SALES-AREA"));
    EXPECT_THAT(ui.host.messages, IsEmpty()) << "nothing is asked";
    tree->Select(0);
    choose(*tree, "Draw i&ts area");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("Nothing was drawn: there is no record EMPSCHM in schema EMPSCHM."));
}

TEST_F(IsolateViewTest, AClickOnABoxSelectsItsRecordAndShowsItsDetails) {
    Press("cmdDraw");
    emit drawing->ShapeClicked("REPAIR");
    EXPECT_EQ(Tviewrec->SelectedNode(), 2u);
    EXPECT_THAT(Column("FlxGrid", 1), Contains(" REPAIR"));
    EXPECT_EQ(drawing->Src().toStdString(), DrawingFile("INSTRUMENT"));
    emit drawing->ShapeClicked("a line");
    EXPECT_EQ(Tviewrec->SelectedNode(), 2u);
}

TEST_F(IsolateViewTest, ALayoutIsAppliedToTheFileOnShow) {
    Press("cmdApplyLayout");
    EXPECT_THAT(ui.host.messages, IsEmpty()) << "there is no file";
    Press("cmdDraw");
    ui.host.messages.clear();
    const std::string before = ReadFile(DrawingFile("INSTRUMENT"));
    screen->findChild<QComboBox*>("LayoutTypes")->setCurrentIndex(5);
    EXPECT_EQ(ReadFile(DrawingFile("INSTRUMENT")), before);
    Press("cmdApplyLayout");
    EXPECT_THAT(ui.host.messages, IsEmpty()) << "no question is asked";
    EXPECT_NE(ReadFile(DrawingFile("INSTRUMENT")), before);
    EXPECT_EQ(drawing->Src().toStdString(), DrawingFile("INSTRUMENT"));
    WriteFile(DrawingFile("INSTRUMENT"), "no drawing");
    Press("cmdApplyLayout");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("The drawing was not written: " + DrawingFile("INSTRUMENT") +
                                                 " can be shown, not rewritten"));
}

TEST_F(IsolateViewTest, AChosenLayoutDrawsAnew) {
    auto* layouts = screen->findChild<QComboBox*>("LayoutTypes");
    layouts->setFocus();
    QTest::keyClick(layouts, Qt::Key_Down);
    UiApp::Settle();
    EXPECT_EQ(layouts->currentText(), "RadialDefault");
    EXPECT_THAT(ui.host.messages, IsEmpty()) << "it is only chosen";
    QTest::keyClick(layouts, Qt::Key_Return);
    UiApp::Settle();
    EXPECT_EQ(Label1->text(), "Done..");
}

TEST_F(IsolateViewTest, SaysWhatItLacks) {
    Press("cmdPrint");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("You must Draw visio diagram then PRINT it"));
    std::filesystem::remove(ui.folder.Path("Stencils"));
    Press("cmdDraw");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Want to View While Norvelis is drawing",
                                                 "You must have Visio installed to perform this functions"));
    EXPECT_FALSE(ui.frame->Context().commands.Busy());
    EXPECT_EQ(Label1->text(), "CURRENT RECORD: INSTRUMENT") << "nothing is being prepared any more";

    std::filesystem::remove_all(ui.folder.Path("visio files"));
    WhenWaiting([](QWidget& waiting) { dynamic_cast<QFileDialog&>(waiting).reject(); });
    Press("cmdDraw");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("You must select a location to store visio files."));
    EXPECT_EQ(Label1->text(), "CURRENT RECORD: INSTRUMENT");
}

TEST_F(IsolateViewTest, ADrawingThatCanNotBeSavedIsSaid) {
    WriteFile(ui.folder.Path("visio files/EMPSCHM"), "a file where the folder should be");
    Press("cmdDraw");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("The drawing was not written: Path/File access error: " +
                                ui.folder.Path("visio files/EMPSCHM") + ": Not a directory",
                            "Error has been encountered. Close visio and try again."));
    EXPECT_EQ(Label1->text(), "CURRENT RECORD: INSTRUMENT");
    EXPECT_EQ(drawing->Src(), "");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(IsolateViewTest, ADrawingGrowsOnTheScreenUntilThePersonGoesOn) {
    const std::string snapshot = ui.folder.Path("7.055475.vsd");
    WriteFile(snapshot, "as far as it got");
    QString text, file;
    ScreenDrawing draw(ui.frame->Context(), *Tviewrec, *screen->findChild<DrawingPanel*>());
    draw.showText = [&](const QString& shown) { text = shown; };
    draw.showFile = [&](const QString& shown) { file = shown; };
    DrawScreen& shown = draw.State().screen;
    shown.ShowText("Creating Shapes......");
    shown.ShowFile(snapshot);
    shown.MarkNode(2);
    EXPECT_EQ(text, "Creating Shapes......");
    EXPECT_EQ(drawing->Src().toStdString(), snapshot);
    EXPECT_EQ(file.toStdString(), snapshot);
    EXPECT_EQ(Tviewrec->SelectedNode(), 2u);
    shown.ShowFile("nowhere.vsd");
    EXPECT_EQ(drawing->Src(), "") << "a drawing that could not be saved";

    Isolate("CLIENT");
    shown.ShowText("Now Connecting Shapes..");
    shown.ShowFile(snapshot);
    shown.EnsureVisible(2);
    EXPECT_EQ(draw.Tree().Text(0), "INSTRUMENT") << "it is drawn to its end";
    EXPECT_EQ(text, "Creating Shapes......");
    EXPECT_EQ(drawing->Src(), "");
    EXPECT_EQ(Label1->text(), "CURRENT RECORD: CLIENT");
}

}  // namespace
}  // namespace norvelis::ui
