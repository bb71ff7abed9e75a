#include <gmock/gmock.h>

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>

#include "core/settings.h"
#include "desktop/drawing_pictures.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/vbal_progress_bar.h"
#include "ui/ui_app.h"
#include "ui/until_rested.h"
#include "ui/until_shown.h"

namespace norvelis::ui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class SessionTest : public ::testing::Test {
  protected:
    UiApp ui;

    void StartAndExtract() {
        ui.Start();
        ui.Choose("mnu_Classic_Extract_Report");
        ui.host.messages.clear();
    }
    template <typename T>
    T* OnTreeScreen(const char* name) const {
        T* found = ui.frame->Find(Screen::Treeview)->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    cTreeView& Tview() const { return *OnTreeScreen<cTreeView>("Tview"); }
    DrawingControl2& Drawing() const { return *OnTreeScreen<DrawingControl2>("DrawingControl2"); }
    void Press(const char* button) {
        OnTreeScreen<SkinButton>(button)->click();
        UiApp::Settle();
    }
    std::string SavedDrawing(const std::string& name) const {
        return ui.folder.Path("visio files/EMPSCHM/" + name + ".vsd");
    }
    QRect LineOf(const char* text) {
        Tview().SelectRecord(text);
        return Tview().visualRect(Tview().currentIndex());
    }
    void MouseRestsOn(const char* text, int right) {
        QTest::mouseMove(Tview().viewport(), LineOf(text).topLeft() + QPoint(right, 4));
        QApplication::processEvents();
        UntilRested(*ui.frame->Find(Screen::Treeview));
    }
    /// Clicks the box of a record in the drawing beside the tree, which shows its whole page.
    void ClickBox(const QString& record) {
        DrawingControl2& control = Drawing();
        UntilShown(control);
        constexpr int kMargin = 12;
        const int box = control.Page().Named(record.toStdString());
        ASSERT_NE(box, drawing::walk::kNone);
        const Point center = control.Page()[box].bounds.Center();
        const QSizeF page = desktop::OpenDrawingPages(control.Src())->Picture(0)->PageSize();
        const double scale = std::min((control.width() - 2 * kMargin) / page.width(),
                                      (control.height() - 2 * kMargin) / page.height());
        const QPointF middle(control.width() / 2.0, control.height() / 2.0);
        const QPointF place =
            middle + (QPointF(center.x, center.y) - QPointF(page.width(), page.height()) / 2) * scale;
        QTest::mouseClick(&control, Qt::LeftButton, {}, place.toPoint());
    }
    /// PRINT, and PDF FILE in the preview that it opens.
    void PrintTo(const std::string& file) {
        Press("cmdPrint");
        WhenWaiting([file](QWidget& waiting) {
            auto& dialog = dynamic_cast<QFileDialog&>(waiting);
            EXPECT_THAT(dialog.selectedFiles().value(0).toStdString(), ::testing::EndsWith("EMPSCHM.pdf"));
            dialog.selectFile(QString::fromStdString(file));
            QMetaObject::invokeMethod(&dialog, "accept");
        });
        ui.frame->Find(Screen::PrintPreview)->findChild<SkinButton*>("cmdPdf")->click();
        UiApp::Settle();
    }
};

TEST_F(SessionTest, FromTheReportToThePrintedDiagram) {
    ui.Start();
    setreportlocation(ui.app, "");
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("IDMS Report file has not been set."));
    setreportlocation(ui.app, ui.folder.Path("reportfiles/empschm.text"));
    ui.frame->Find(Screen::Settings)->close();
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_THAT(ui.host.TakeTexts(), Contains(StartsWith("Done Extracting Records from report file: ")));
    EXPECT_EQ(Tview().model()->rowCount(), 32);

    QTest::keyClick(&Tview(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(OnTreeScreen<QLineEdit>("Text1"), "repair");
    QTest::keyClick(OnTreeScreen<QLineEdit>("Text1"), Qt::Key_Return);
    EXPECT_EQ(Tview().Tree().Text(Tview().SelectedNode()), "REPAIR");

    MouseRestsOn("COMMISSION", 90);
    auto* tip = OnTreeScreen<QWidget>("frmToolTip");
    EXPECT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->findChild<QLabel*>("lblRecordname")->text(), "COMMISSION");

    QTest::mouseClick(Tview().viewport(), Qt::LeftButton, {}, LineOf("COMMISSION").topLeft() + QPoint(90, 4));
    Form* isolate = ui.frame->Find(Screen::IsolateView);
    ASSERT_NE(isolate, nullptr);
    EXPECT_FALSE(tip->isVisible());
    isolate->findChild<SkinButton*>("cmdDraw")->click();
    EXPECT_TRUE(FileExists(SavedDrawing("COMMISSION")));
    isolate->close();

    MouseRestsOn("REPAIR", 120);
    MouseRestsOn("COMMISSION", 90);
    EXPECT_EQ(Drawing().Src().toStdString(), SavedDrawing("COMMISSION")) << "the mouse shows what was drawn";
    UntilShown(Drawing());
    EXPECT_LT(Drawing().Zoom(), 1) << "the whole page is in sight";

    ui.host.messages.clear();
    ui.Choose("mnu_Draw_Fancy_Single");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("This Process may take some time.\r\nDo you want to continue?",
                            "Draw diagram for dictionary EMPSCHM?", "Want to View While Norvelis is drawing",
                            "Done Drawing. File saved as:" + SavedDrawing("EMPSCHM")));
    EXPECT_EQ(Drawing().Src().toStdString(), SavedDrawing("EMPSCHM"));
    EXPECT_EQ(OnTreeScreen<QLabel>("lblFile")->text().toStdString(), SavedDrawing("EMPSCHM"));
    ClickBox("SUPPLIER");
    EXPECT_EQ(Drawing().SelectedShape(), "SUPPLIER");
    EXPECT_EQ(Tview().Tree().Text(Tview().SelectedNode()), "SUPPLIER");

    const std::string pdf = ui.folder.Path("diagram.pdf");
    PrintTo(pdf);
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Visio document has been sent to the Print"));
    EXPECT_THAT(ReadFile(pdf), StartsWith("%PDF-"));

    ui.Choose("mnuExit");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Are you sure you want to exit the system?"));
    EXPECT_FALSE(ui.frame->isVisible());
    EXPECT_THAT(ui.failures, IsEmpty());
}

TEST_F(SessionTest, ADrawingThatIsHalfWrittenIsSaidWhereverItIsUsed) {
    StartAndExtract();
    Press("cmdDraw");
    const std::string whole = ReadFile(SavedDrawing("EMPSCHM"));
    WriteFile(SavedDrawing("EMPSCHM"), whole.substr(0, whole.size() / 2));
    ui.host.messages.clear();
    MouseRestsOn("REPAIR", 120);
    const QImage nothing = Drawing().grab().toImage();
    MouseRestsOn("EMPSCHM", 60);
    UntilShown(Drawing());
    EXPECT_EQ(Drawing().Src().toStdString(), SavedDrawing("EMPSCHM"));
    EXPECT_NE(Drawing().grab().toImage(), nothing) << "the reason is in its place";
    Press("cmdPrint");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(StartsWith("This drawing can not be printed: ")));
    Press("cmdDraw");
    UntilShown(Drawing());
    ClickBox("SUPPLIER");
    EXPECT_EQ(Drawing().SelectedShape(), "SUPPLIER") << "drawn again it is whole";
    EXPECT_THAT(ui.failures, IsEmpty());
}

TEST_F(SessionTest, SeparatePagesComeOneForEachEntryRecord) {
    StartAndExtract();
    ui.Choose("mnu_Draw_Fancy_Separate");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Want to View While Norvelis is drawing",
                                                 "Done Drawing. Visio Files saved at folder:\r\n" +
                                                     ui.folder.Path("visio files/")));
    for (const char* record : {"CLIENT", "DAY-LEDGER", "WORKSHOP"})
        EXPECT_TRUE(FileExists(SavedDrawing(record))) << record;
    EXPECT_FALSE(FileExists(SavedDrawing("REPAIR"))) << "is reached through its owner alone";
    EXPECT_EQ(Tview().Tree().Text(Tview().SelectedNode()), "DAY-LEDGER") << "the last one drawn";
    EXPECT_EQ(Tview().currentIndex().data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
}

TEST_F(SessionTest, DrawingNeedsItsFolderAndAYes) {
    StartAndExtract();
    std::filesystem::remove_all(ui.folder.Path("visio files"));
    ui.Choose("mnu_Draw_Fancy_Single");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Please set where to drop Visio files."));
    EXPECT_TRUE(ui.frame->Find(Screen::Settings)->isVisible());
    ui.frame->Find(Screen::Settings)->close();
    std::filesystem::create_directories(ui.folder.Path("visio files"));
    ui.host.answers = {Answer::No};
    Press("cmdDraw");
    EXPECT_EQ(ui.host.TakeTexts().size(), 1u);
    EXPECT_FALSE(FileExists(SavedDrawing("EMPSCHM")));
}

TEST_F(SessionTest, WhileItDrawsNoSecondCommandStartsAndBrowsingGoesOn) {
    StartAndExtract();
    bool looked = false;
    ui.host.during = [&](const Message& message) {
        if (message.text != "Want to View While Norvelis is drawing") return;
        looked = true;
        QApplication::processEvents();
        EXPECT_TRUE(ui.frame->Context().commands.Busy());
        for (const char* button : {"cmdDraw", "cmdPrint", "cmdRefresh", "LayoutTypes", "Max"})
            EXPECT_FALSE(OnTreeScreen<QWidget>(button)->isEnabled()) << button;
        EXPECT_FALSE(ui.Find<QAction>("mnu_Draw_Fancy_Separate")->isEnabled());
        EXPECT_TRUE(OnTreeScreen<QWidget>("vbalProgressBar1")->isVisibleTo(ui.frame.get()));
        emit Tview().NodeClicked(1);
        EXPECT_TRUE(ui.frame->Find(Screen::IsolateView)->isVisible());
    };
    Press("cmdDraw");
    EXPECT_TRUE(looked);
    EXPECT_TRUE(FileExists(SavedDrawing("EMPSCHM")));
    EXPECT_TRUE(OnTreeScreen<QWidget>("cmdDraw")->isEnabled());
    EXPECT_FALSE(OnTreeScreen<QWidget>("vbalProgressBar1")->isVisible());
}

TEST_F(SessionTest, ACommandBeginsWithEmptyBarsAndShowsTheTreeScreen) {
    StartAndExtract();
    auto* text = OnTreeScreen<vbalProgressBar>("vbalProgressBar3");
    EXPECT_THAT(text->text().toStdString(), HasSubstr("Loading")) << "the last words stay";
    ui.frame->Find(Screen::Treeview)->close();
    std::vector<std::string> seen;
    ui.host.during = [&](const Message&) {
        UiApp::Settle();
        EXPECT_TRUE(ui.frame->Find(Screen::Treeview)->isVisible());
        seen.push_back(text->text().toStdString() + " " + std::to_string(text->value()));
    };
    ui.Choose("mnu_Draw_Fancy_Single");
    ASSERT_EQ(seen.size(), 4u);
    seen.pop_back();  // "Done Drawing."
    EXPECT_THAT(seen, ::testing::Each(" 0"));
    EXPECT_EQ(text->text(), "100% ");
}

TEST_F(SessionTest, WhatIsNotOnDiskIsSaidBeforeTheEnd) {
    StartAndExtract();
    const std::string copy = ui.folder.Path("visio files/EMPSCHM/EMPSCHM.vsdx");
    std::filesystem::create_directories(copy);
    Press("cmdDraw");
    auto texts = ui.host.TakeTexts();
    ASSERT_EQ(texts.size(), 5u);
    EXPECT_EQ(texts[3], "The .vsdx copy of the drawing was not written: Path/File access error: " + copy +
                            " is a folder");
    EXPECT_EQ(texts[4], "Done Drawing. File saved as:" + SavedDrawing("EMPSCHM"));
    std::filesystem::remove(SavedDrawing("EMPSCHM"));
    std::filesystem::create_directories(SavedDrawing("EMPSCHM"));
    Press("cmdDraw");
    texts = ui.host.TakeTexts();
    ASSERT_EQ(texts.size(), 5u);
    EXPECT_EQ(texts[3], "The drawing was not written: Path/File access error: " + SavedDrawing("EMPSCHM") +
                            " is a folder");
}

TEST_F(SessionTest, AStoreThatFailsInTheMiddleOfADrawIsSaidAndTheProgramGoesOn) {
    StartAndExtract();
    ui.host.during = [&](const Message& message) {
        if (message.text == "Want to View While Norvelis is drawing") ui.app.gConnection->Close();
    };
    Press("cmdDraw");
    EXPECT_THAT(ui.host.messages.back().title, HasSubstr("Error"));
    EXPECT_THAT(ui.failures, IsEmpty());
    EXPECT_FALSE(ui.frame->Context().commands.Busy());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(SessionTest, TheLargerWindowShowsTheDrawingAndOpensOthers) {
    StartAndExtract();
    Press("cmdDraw");
    ui.host.messages.clear();
    Press("Label1");
    Form* viewer = ui.frame->Find(Screen::DrawingViewer);
    ASSERT_NE(viewer, nullptr);
    auto* drawing = viewer->findChild<DrawingControl2*>("DrawingControl2");
    EXPECT_EQ(drawing->Src().toStdString(), SavedDrawing("EMPSCHM"));
    EXPECT_GT(drawing->width(), Drawing().width());
    UntilShown(*drawing);
    const double fitted = drawing->Zoom();
    viewer->findChild<SkinButton*>("cmdZoomIn")->click();
    EXPECT_GT(drawing->Zoom(), fitted);
    viewer->findChild<SkinButton*>("cmdFit")->click();
    EXPECT_DOUBLE_EQ(drawing->Zoom(), fitted);

    const auto pick = [&](const std::string& file) {
        WhenWaiting([file](QWidget& waiting) {
            auto* dialog = qobject_cast<QFileDialog*>(&waiting);
            ASSERT_NE(dialog, nullptr);
            if (file.empty()) return dialog->reject();
            dialog->selectFile(QString::fromStdString(file));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        viewer->findChild<SkinButton*>("cmdOpen")->click();
        return ui.host.TakeTexts();
    };
    EXPECT_THAT(pick(""), ElementsAre("Request denied. File not selected"));
    WriteFile(ui.folder.Path("other.vsdx"), "x");
    EXPECT_THAT(pick(ui.folder.Path("other.vsdx")),
                ElementsAre("Request denied. Must be a VISIO (.VSD) file."));
    std::filesystem::copy_file(SavedDrawing("EMPSCHM"), ui.folder.Path("OTHER.VSD"));
    EXPECT_THAT(pick(ui.folder.Path("OTHER.VSD")), IsEmpty());
    EXPECT_EQ(drawing->Src().toStdString(), ui.folder.Path("OTHER.VSD"));
}

}  // namespace
}  // namespace norvelis::ui
