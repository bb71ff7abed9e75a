#include <gtest/gtest.h>

#include <QSplitter>

#include "ui/controls/picture_controls.h"
#include "ui/skins/skin_style.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

class GrowingFormsTest : public ::testing::Test {
  protected:
    UiApp ui;
    Form* tree = nullptr;

    void SetUp() override {
        Start();
        tree->Place();  // The first frame was no larger than the platform's display.
    }
    void Start() {
        ui.Start();
        ui.frame->resize(1600, 1000);
        UiApp::Settle();
        tree = ui.frame->Find(Screen::Treeview);
    }
    void StartAgain() {
        ui.frame->close();
        ui.SetGoodSettings();
        Start();
    }
    QWidget* Part(const char* name) const { return tree->findChild<QWidget*>(name); }
    /// Grips by number: 0 left, 1 right, 2 top, 3 bottom, 4 to 7 the corners.
    void DragGrip(int number, QPoint by) const {
        QWidget* grip = Part(("grip" + std::to_string(number)).c_str());
        const QPoint from = grip->rect().center();
        QTest::mousePress(grip, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(grip, from + by);
        QTest::mouseRelease(grip, Qt::LeftButton, Qt::NoModifier, from + by);
        UiApp::Settle();
    }
    QRect InForm(const char* name) const {
        return QRect(Part(name)->mapTo(tree, QPoint(0, 0)), Part(name)->size());
    }
};

TEST_F(GrowingFormsTest, EdgesAndCornersAreDragged) {
    const QRect first(33, 33, 850, 510);
    ASSERT_EQ(tree->geometry(), first);
    struct Case {
        int grip;
        QPoint by;
        QRect becomes;
    };
    for (const Case& drag : {Case{1, {100, 40}, {33, 33, 950, 510}}, Case{3, {40, 60}, {33, 33, 850, 570}},
                             Case{0, {20, 0}, {53, 33, 830, 510}}, Case{5, {90, 70}, {33, 33, 940, 580}},
                             Case{2, {0, -900}, {33, 0, 850, 543}}}) {
        tree->setGeometry(first);
        DragGrip(drag.grip, drag.by);
        EXPECT_EQ(tree->geometry(), drag.becomes) << drag.grip;
    }
    DragGrip(4, {2000, 2000});
    EXPECT_EQ(tree->size(), tree->SmallestSize()) << "its controls stay whole";
    EXPECT_EQ(tree->geometry().bottomRight(), QRect(33, 0, 850, 543).bottomRight());
}

TEST_F(GrowingFormsTest, WhatAFormHoldsGrowsWithIt) {
    const QRect drawing = InForm("DrawingControl2"), close = InForm("imgClose"), grid = InForm("Tview");
    DragGrip(5, {300, 200});
    EXPECT_EQ(InForm("imgClose").topLeft(), close.topLeft() + QPoint(300, 0));
    EXPECT_GE(InForm("DrawingControl2").width(), drawing.width() + 200);
    EXPECT_EQ(InForm("Tview").height(), grid.height() + 200);
    ui.frame->Context().skin.ChangeTo("Midnight");
    UiApp::Settle();
    EXPECT_EQ(InForm("imgClose").topLeft(), close.topLeft() + QPoint(300, 0)) << "with another skin too";
}

TEST_F(GrowingFormsTest, MaximizedItFillsTheAreaUntilItIsRestored) {
    auto* button = dynamic_cast<WindowButton*>(Part("imgRestore"));
    EXPECT_EQ(button->Tag(), "Maximize");
    const auto toggle = [&](int how) {
        if (how == 0) QTest::mouseClick(button, Qt::LeftButton);
        if (how == 1) QTest::mouseDClick(tree, Qt::LeftButton, Qt::NoModifier, QPoint(400, 20));
        if (how == 2) ui.Choose("mnuMaximize");
        UiApp::Settle();
    };
    for (const int how : {0, 1, 2}) {
        toggle(how);
        EXPECT_EQ(tree->geometry(), ui.frame->Area().rect()) << how;
        EXPECT_EQ(button->Tag(), "Restore");
        EXPECT_EQ(button->toolTip(), "Restore");
        ui.frame->resize(1700 + how, 1000);
        UiApp::Settle();
        EXPECT_EQ(tree->geometry(), ui.frame->Area().rect()) << "it follows the frame";
        QTest::mousePress(tree, Qt::LeftButton, Qt::NoModifier, QPoint(400, 20));
        QTest::mouseMove(tree, QPoint(500, 90));
        QTest::mouseRelease(tree, Qt::LeftButton, Qt::NoModifier, QPoint(500, 90));
        EXPECT_EQ(tree->geometry(), ui.frame->Area().rect()) << "and cannot be moved";
        toggle(how);
        EXPECT_EQ(tree->geometry(), QRect(33, 33, 850, 510));
        EXPECT_EQ(button->Tag(), "Maximize");
    }
    QTest::mouseDClick(tree, Qt::LeftButton, Qt::NoModifier, QPoint(4, 300));
    EXPECT_FALSE(tree->IsMaximized()) << "only the caption does it";
}

TEST_F(GrowingFormsTest, AFormIsFoundAsItWasLeft) {
    StartAgain();
    EXPECT_EQ(ui.Ini("Forms", "frm_TreeviewWidth"), "") << "nothing is kept of a form at its first size";
    tree->setGeometry(60, 50, 900, 600);
    StartAgain();
    EXPECT_EQ(ui.Ini("Forms", "frm_TreeviewWidth"), "13500");
    EXPECT_EQ(tree->geometry(), QRect(60, 50, 900, 600));
    tree->ToggleMaximized();
    StartAgain();
    EXPECT_EQ(tree->geometry(), ui.frame->Area().rect());
    tree->ToggleMaximized();
    EXPECT_EQ(tree->geometry(), QRect(60, 50, 900, 600));
    ui.Choose("mnuOriginalSize");
    EXPECT_EQ(tree->geometry(), QRect(33, 33, 850, 510));
    EXPECT_EQ(ui.Ini("Forms", "frm_TreeviewWidth"), "");
    StartAgain();
    EXPECT_EQ(tree->geometry(), QRect(33, 33, 850, 510));
}

TEST_F(GrowingFormsTest, WhatWasLeftFitsASmallerFrame) {
    tree->setGeometry(1200, 700, 1500, 900);
    ui.frame->close();
    WriteINIValue("mdiMainMenu", "Width", "15000", ui.folder.Path("INI/Local.Ini"));
    WriteINIValue("mdiMainMenu", "Height", "10500", ui.folder.Path("INI/Local.Ini"));
    ui.SetGoodSettings();
    ui.Start();
    const Form* again = ui.frame->Find(Screen::Treeview);
    EXPECT_TRUE(ui.frame->Area().rect().contains(again->geometry()));
    EXPECT_EQ(again->size(), ui.frame->Area().size());
}

TEST_F(GrowingFormsTest, NonsenseInTheIniIsNotTaken) {
    ui.frame->close();
    for (const char* key : {"Left", "Top", "Width", "Height"})
        WriteINIValue("Forms", std::string("frm_Treeview") + key, "-30", ui.folder.Path("INI/Local.Ini"));
    ui.SetGoodSettings();
    Start();
    EXPECT_EQ(tree->geometry(), QRect(33, 33, 850, 510));
}

TEST_F(GrowingFormsTest, AFormOpensInsideTheFrame) {
    tree->MoveTo(QPoint(1400, 900));
    tree->close();
    ui.Choose("mnuTreeview");
    EXPECT_TRUE(ui.frame->Area().rect().contains(tree->geometry()));
}

TEST_F(GrowingFormsTest, OfAFewWordsItHasOneSize) {
    ui.Choose("mnu_about");
    Form* about = ui.frame->Area().Active();
    EXPECT_FALSE(about->findChild<QWidget*>("imgRestore")->isVisible());
    QTest::mouseDClick(about, Qt::LeftButton, Qt::NoModifier, QPoint(250, 20));
    EXPECT_EQ(about->size(), QSize(500, 300));
}

// A background with a gradient across: only a form that is larger has it stretched, and corners never.
TEST_F(GrowingFormsTest, TheBackgroundIsStretchedOnlyWhereTheFormIsLarger) {
    const Picture picture = Picture::Drawn(QSize(300, 200), [](QPainter& painter) {
        for (int x = 0; x < 300; ++x) painter.fillRect(x, 0, 1, 200, QColor(x / 2, 200, 100));
    });
    tree->SetPicture(picture);
    const auto redAt = [&](QSize size, int x) {
        QImage image(size, QImage::Format_RGB32);
        QPainter painter(&image);
        picture.PaintPatches(painter, QRectF(QPointF(), QSizeF(size)), QMarginsF(8, 40, 140, 8));
        painter.end();
        return image.pixelColor(x, 100).red();
    };
    for (const int x : {0, 100, 299}) EXPECT_EQ(redAt(QSize(300, 200), x), x / 2) << x;
    EXPECT_EQ(redAt(QSize(600, 200), 599), 149);
    EXPECT_EQ(redAt(QSize(600, 200), 599 - 139), 80) << "the right end keeps its size";
    EXPECT_NEAR(redAt(QSize(600, 200), 8 + 226), 42, 2) << "the middle is stretched";
    EXPECT_EQ(redAt(QSize(250, 200), 50), 25) << "and in a smaller form it is cut";
    EXPECT_EQ(redAt(QSize(250, 200), 249), 149);
}

TEST_F(GrowingFormsTest, LargerTextMakesFormsAndButtonsLarger) {
    const int button = Part("cmdDraw")->height();
    ui.frame->close();
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(26);
    QApplication::setFont(large);
    ui.SetGoodSettings();
    ui.Start();
    ui.frame->resize(2400, 1400);
    UiApp::Settle();
    tree = ui.frame->Find(Screen::Treeview);
    tree->BackToOriginalSize();
    UiApp::Settle();
    EXPECT_EQ(TextScale(), 2);
    EXPECT_EQ(tree->size(), QSize(1700, 1020));
    EXPECT_GT(Part("cmdDraw")->height(), button);
    EXPECT_EQ(tree->findChild<QLabel*>("lblCaption")->font().pixelSize(), 28);
    for (const char* name : {"cmdMove0", "cmdDraw", "cmdPrint", "ExpandAll"}) {
        const auto* control = dynamic_cast<QPushButton*>(Part(name));
        EXPECT_GE(control->width(), control->fontMetrics().horizontalAdvance(control->text())) << name;
    }
    ui.frame.reset();
    QApplication::setFont(usual);
}

}  // namespace
}  // namespace norvelis::ui
