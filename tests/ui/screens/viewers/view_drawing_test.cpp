#include <gmock/gmock.h>

#include <QFileDialog>
#include <QLabel>
#include <QMimeData>
#include <QUrl>

#include "testing/foreign_drawing.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/picture_controls.h"
#include "ui/ui_app.h"
#include "ui/until_shown.h"

namespace norvelis::ui {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ViewDrawingTest : public ::testing::Test {
  protected:
    UiApp ui;

    void SetUp() override { ui.Start(); }
    void Pick(Screen screen, const std::string& file) {
        ui.frame->activateWindow();  // Which a dialog before took over.
        Drawing(screen).setFocus();
        UiApp::Settle();
        WhenWaiting([file](QWidget& waiting) {
            auto& dialog = dynamic_cast<QFileDialog&>(waiting);
            if (file.empty()) return dialog.reject();
            dialog.selectFile(QString::fromStdString(file));
            QMetaObject::invokeMethod(&dialog, "accept");
        });
        QTest::keyClick(&Drawing(screen), Qt::Key_O, Qt::ControlModifier);
        UiApp::Settle();
    }
    DrawingControl2& Drawing(Screen screen) const {
        return *ui.frame->Find(screen)->findChild<DrawingControl2*>("DrawingControl2");
    }
    void Drop(Screen screen, const std::string& file) {
        QMimeData dragged;
        dragged.setUrls({QUrl::fromLocalFile(QString::fromStdString(file))});
        QDragEnterEvent enters({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&Drawing(screen), &enters);
        QDropEvent drops({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        if (enters.isAccepted()) QApplication::sendEvent(&Drawing(screen), &drops);
    }
};

TEST_F(ViewDrawingTest, AnyVsdFileIsPickedAndOthersAreRefused) {
    const std::string file = ui.folder.Path("ANY.VSD"), other = ui.folder.Path("any.vsdx");
    WriteFile(file, kForeignDrawing);
    WriteFile(other, kForeignDrawing);
    ui.frame->Context().request(ShowDrawing{});
    for (const Screen screen : {Screen::DrawingViewer, Screen::Treeview}) {
        ui.host.OpenScreen(screen, false);
        Pick(screen, "");
        Pick(screen, other);
        EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Request denied. File not selected",
                                                     "Request denied. Must be a VISIO (.VSD) file."));
        Pick(screen, file);
        EXPECT_EQ(Drawing(screen).Src().toStdString(), file);
        UntilShown(Drawing(screen));
    }
}

TEST_F(ViewDrawingTest, ADrawingOfAnotherProgramIsDroppedShownPrintedAndNotArranged) {
    const std::string file = ui.folder.Path("theirs.vdx"), text = ui.folder.Path("theirs.txt");
    WriteFile(file, kForeignDrawing + std::string("<damaged"));
    WriteFile(text, "x");
    ui.Choose("mnu_Classic_Extract_Report");
    ui.host.messages.clear();
    const auto* tree = ui.frame->Find(Screen::Treeview)->findChild<cTreeView*>("Tview");
    ui.frame->Context().request(IsolateRecord{tree->Tree().Subtree(0)});
    Drop(Screen::IsolateView, text);
    EXPECT_EQ(Drawing(Screen::IsolateView).Src(), "");
    testing::internal::CaptureStderr();
    Drop(Screen::IsolateView, file);
    UntilShown(Drawing(Screen::IsolateView));
    Drawing(Screen::IsolateView).grab();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "no library speaks";
    EXPECT_GT(Drawing(Screen::IsolateView).Zoom(), 0);
    const auto press = [this](const char* button) {
        ui.frame->Find(Screen::IsolateView)->findChild<SkinButton*>(button)->click();
        UiApp::Settle();
    };
    press("cmdApplyLayout");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(EndsWith("theirs.vdx can be shown, not rewritten")));
    EXPECT_TRUE(ReadFile(file).ends_with("<damaged"));
    press("cmdPrint");
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
    EXPECT_TRUE(ui.frame->Find(Screen::PrintPreview)->isVisible());
}

TEST_F(ViewDrawingTest, ADrawingIsExportedAndOneOfAnotherProgramIsNotRewritten) {
    const std::string file = ui.folder.Path("theirs.vdx");
    WriteFile(file, kForeignDrawing);
    ui.frame->Context().request(ShowDrawing{file});
    UntilShown(Drawing(Screen::DrawingViewer));
    const auto exportTo = [&](const std::string& ending) {
        const std::string out = ui.folder.Path("out." + ending);
        WhenWaiting([out](QWidget& waiting) {
            dynamic_cast<QFileDialog&>(waiting).selectFile(QString::fromStdString(out));
            QMetaObject::invokeMethod(&waiting, "accept");
        });
        Drawing(Screen::DrawingViewer)
            .findChild<QAction*>(QString::fromStdString("mnuExport_" + ending))
            ->trigger();
        return FileExists(out);
    };
    for (const char* ending : {"svg", "png", "pdf"}) EXPECT_TRUE(exportTo(ending)) << ending;
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
    EXPECT_FALSE(exportTo("vsdx"));
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(EndsWith("it can be shown, not rewritten")));
}

TEST_F(ViewDrawingTest, AClickedLineIsToldFromTheDictionaryOrWhyNot) {
    ui.Choose("mnu_Classic_Extract_Report");
    ui.Choose("mnu_Draw_Fancy_Single");
    DrawingControl2& drawing = Drawing(Screen::Treeview);
    UntilShown(drawing);
    const auto told = [&] {
        drawing.ShowShape("SHOP-STAFF");
        QTest::keyClick(&drawing, Qt::Key_Return);
        return drawing.findChild<QLabel*>("DrawingCard")->text().toStdString();
    };
    EXPECT_THAT(told(), AllOf(HasSubstr("SHOP-STAFF"), HasSubstr("WORKSHOP"),
                              HasSubstr("MAKER-NAME ascending"), HasSubstr("EMPSCHM")));
    ui.app.gConnection->Execute("Delete * FROM Connection_Details");
    EXPECT_THAT(told(), AllOf(HasSubstr("WORKSHOP"), HasSubstr("It may have been cleared")));
}

}  // namespace
}  // namespace norvelis::ui
