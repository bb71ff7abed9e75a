#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>
#include <QSet>
#include <QStatusBar>
#include <QToolButton>

#include "ui/controls/fb_tray_icon.h"
#include "ui/controls/vbal_progress_bar.h"
#include "ui/screens/settings/set_directory.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

class FormsTest : public ::testing::Test {
  protected:
    UiApp ui;
    Form *tree = nullptr, *settings = nullptr;

    void SetUp() override {
        ui.Start();
        ui.Choose("mnuColors");
        tree = ui.frame->Find(Screen::Treeview);
        settings = ui.frame->Find(Screen::Settings);
    }
    static void Drag(Form* form, QPoint from, QPoint by) {
        QTest::mousePress(form, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(form, from + by);
        QTest::mouseRelease(form, Qt::LeftButton, Qt::NoModifier, from);
    }
};

TEST_F(FormsTest, AFormIsMovedByItsBackground) {
    const QPoint place = settings->pos();
    Drag(settings, QPoint(300, 20), QPoint(120, 60));
    EXPECT_EQ(settings->pos(), place + QPoint(120, 60));
    Drag(settings, QPoint(300, 20), QPoint(3000, 3000));
    EXPECT_LE(settings->x(), ui.frame->Area().width() - 80) << "the caption stays within reach";
    EXPECT_LE(settings->y(), ui.frame->Area().height() - 40);
}

TEST_F(FormsTest, OnALowDisplayAFormStandsWholeInTheFrame) {
    const int around = ui.frame->height() - ui.frame->Area().height();
    for (const auto& [height, top] : {std::pair(520, 10), std::pair(400, 0), std::pair(600, 33)}) {
        ui.frame->resize(ui.frame->width(), height + around);
        UiApp::Settle();
        settings->Place();
        EXPECT_EQ(settings->y(), top) << height;
    }
}

TEST_F(FormsTest, MinimisedFormsWaitInTheStatusBar) {
    QTest::mouseClick(settings->findChild<QWidget*>("imgMinimize"), Qt::LeftButton);
    UiApp::Settle();
    EXPECT_FALSE(settings->isVisible());
    EXPECT_EQ(ui.frame->Area().Active(), tree);
    auto* button = ui.frame->statusBar()->findChild<QToolButton*>("minimized");
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), "SETTINGS");
    button->click();
    UiApp::Settle();
    EXPECT_TRUE(settings->isVisible());
    EXPECT_EQ(ui.frame->Area().Active(), settings);
    EXPECT_EQ(ui.frame->statusBar()->findChild<QToolButton*>("minimized"), nullptr);
}

TEST_F(FormsTest, ClosingKeepsTheTreeAndUnloadsTheSettings) {
    QTest::mouseClick(settings->findChild<QWidget*>("imgClose"), Qt::LeftButton);
    UiApp::Settle();
    EXPECT_EQ(ui.frame->Find(Screen::Settings), nullptr);
    QTest::mouseClick(tree->findChild<QWidget*>("imgClose"), Qt::LeftButton);
    EXPECT_EQ(ui.frame->Find(Screen::Treeview), tree);
    EXPECT_FALSE(tree->isVisible());
    EXPECT_TRUE(ui.frame->Area().OpenForms().empty());
}

TEST_F(FormsTest, AScreenThatIsWaitedForStandsOnItsOwnAndComesBackIntoTheFrame) {
    settings->close();
    UiApp::Settle();
    for (const auto& [screen, kept] :
         {std::pair(Screen::Settings, false), std::pair(Screen::Treeview, true)}) {
        bool waited = false;
        WhenWaiting([&](QWidget& waiting) {
            waited = &waiting == ui.frame->Find(screen) && waiting.isWindow();
            QTest::keyClick(&waiting, Qt::Key_Escape);
        });
        ui.host.OpenScreen(screen, true);
        UiApp::Settle();
        EXPECT_TRUE(waited);
        EXPECT_EQ(ui.frame->Find(screen) != nullptr, kept);
        ui.host.OpenScreen(screen, false);
        UiApp::Settle();
        EXPECT_TRUE(ui.frame->Find(screen)->isVisible());
        EXPECT_EQ(ui.frame->Find(screen)->parentWidget(), &ui.frame->Area());
    }
}

TEST_F(FormsTest, ButtonsObeyTheKeyboard) {
    auto* apply = settings->findChild<QWidget*>("lblApply");
    apply->setFocus();
    QTest::keyClick(apply, Qt::Key_Return);
    EXPECT_NE(ReadSetting(ui.app, "visiobackground"), std::nullopt);
}

TEST_F(FormsTest, TheKeyboardGoesRoundInsideAFormAndFromFormToForm) {
    ui.frame->activateWindow();
    ASSERT_TRUE(settings->isAncestorOf(QApplication::focusWidget()));
    QSet<QWidget*> reached;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        ASSERT_TRUE(settings->isAncestorOf(QApplication::focusWidget()));
        reached.insert(QApplication::focusWidget());
    }
    for (const char* control :
         {"cboSkinSchemes", "picColorPalette", "picColorsSquare", "lblWindowsColors", "imgAutoApply",
          "Changerpt", "ChangeVisio", "cboStartUpForm", "imgVisioSet", "lblApply", "lblSave"})
        EXPECT_TRUE(reached.contains(settings->findChild<QWidget*>(control))) << control;
    ui.frame->Area().ActivateNext(1);
    EXPECT_EQ(ui.frame->Area().Active(), tree);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F4, Qt::ControlModifier);
    EXPECT_FALSE(tree->isVisible());
}

TEST_F(FormsTest, EveryControlThatTheKeyboardReachesHasANameForScreenReaders) {
    ui.Choose("mnu_about");
    const setDirectory picker(ui.frame->Context(), setDirectory::Picks::File);
    for (const Form* form :
         std::initializer_list<const Form*>{tree, settings, ui.frame->Area().Active(), &picker}) {
        EXPECT_FALSE(form->accessibleName().isEmpty());
        for (const QWidget* control : form->findChildren<QWidget*>()) {
            if (!(control->focusPolicy() & Qt::TabFocus) || control->objectName().startsWith("qt_")) continue;
            if (control->objectName().isEmpty()) continue;
            QAccessibleInterface* spoken =
                QAccessible::queryAccessibleInterface(const_cast<QWidget*>(control));
            ASSERT_NE(spoken, nullptr) << control->objectName().toStdString();
            EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty() &&
                         spoken->text(QAccessible::Value).isEmpty())
                << control->objectName().toStdString();
        }
    }
}

TEST(Bars, ABarShowsTheStateThatItIsGiven) {
    vbalProgressBar bar("bar", nullptr);
    bar.resize(200, 20);
    ProgressBar state;
    state.Max = 10;
    state.Value = 9;
    state.Text = "90% Complete. Loading X";
    state.Visible = true;
    bar.Show(state);
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.maximum(), 10);
    EXPECT_EQ(bar.value(), 9);
    EXPECT_EQ(bar.text(), "90% Complete. Loading X");
    const QImage picture = bar.grab().toImage();
    EXPECT_EQ(picture.pixelColor(170, 3), bar.palette().color(QPalette::Highlight));
    EXPECT_NE(picture.pixelColor(190, 3), bar.palette().color(QPalette::Highlight));
    state.Max = 0;
    state.Visible = false;
    bar.Show(state);
    EXPECT_FALSE(bar.isVisible());
}

TEST(TrayIcon, TheTipIsAProperty) {
    fbTrayIcon tray(nullptr);
    tray.setProperty("TrayIconTip", "Working");
    EXPECT_EQ(tray.TrayIconTip(), "Working");
}

}  // namespace
}  // namespace norvelis::ui
