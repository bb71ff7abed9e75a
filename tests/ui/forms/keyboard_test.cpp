#include <gtest/gtest.h>

#include <QComboBox>
#include <QScrollBar>
#include <QWheelEvent>

#include "testing/schema_rows.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/layout_types.h"
#include "ui/forms/reading_order.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

class KeyboardTest : public ::testing::Test {
  protected:
    UiApp ui;
    Form* tree = nullptr;

    void SetUp() override {
        SchemaRows(*ui.app.gConnection).Entry("DEPT");
        ui.Start();
        ui.frame->activateWindow();
        tree = ui.frame->Find(Screen::Treeview);
    }
    static std::vector<std::string> TabRound(Form& form, const char* from) {
        std::vector<std::string> names;
        auto* start = form.findChild<QWidget*>(from);
        start->setFocus();
        do {
            names.push_back(QApplication::focusWidget()->objectName().toStdString());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        } while (QApplication::focusWidget() != start && names.size() < 100);
        return names;
    }
    void Run(const std::function<void()>& command) {
        ui.frame->Context().commands.Run({"Test", Screen::Treeview}, command);
        UiApp::Settle();
    }
    static void Wheel(QWidget& control) {
        QWheelEvent wheel(QPointF(5, 5), control.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&control, &wheel);
    }
};

TEST_F(KeyboardTest, TheTabKeyGoesInReadingOrder) {
    const auto round = TabRound(*tree, "Tview");
    const auto place = [&round](const char* name) { return std::find(round.begin(), round.end(), name); };
    const char* expected[] = {"Tview",     "cmdMove0",   "cmdMove5", "Text1",           "cmdSearch",
                              "ExpandAll", "cmdRefresh", "Max",      "DrawingControl2", "LayoutTypes",
                              "cmdDraw",   "cmdPrint",   "Label1"};
    for (std::size_t i = 1; i < std::size(expected); ++i) {
        EXPECT_NE(place(expected[i]), round.end()) << expected[i];
        EXPECT_LT(place(expected[i - 1]), place(expected[i])) << expected[i];
    }
}

// Of neighbours in the order that are in the same row or column, the later is to the right or below.
TEST_F(KeyboardTest, OnEveryScreenTheOrderGoesRightAndDown) {
    ui.Choose("mnuColors");
    QTest::keyClick(tree->findChild<QWidget*>("Tview"), Qt::Key_Return);
    ui.Choose("mnu_Scheduler");
    for (const Screen screen : {Screen::Treeview, Screen::Settings, Screen::IsolateView, Screen::Scheduler}) {
        Form& form = *ui.frame->Find(screen);
        auto order = ReadingOrder(form);
        std::erase_if(order, [](const QWidget* control) { return !control->isVisible(); });
        ASSERT_GT(order.size(), 5u);
        for (std::size_t i = 1; i < order.size(); ++i) {
            const QRect before(order[i - 1]->mapTo(&form, QPoint()), order[i - 1]->size()),
                now(order[i]->mapTo(&form, QPoint()), order[i]->size());
            EXPECT_TRUE(now.left() > before.left() || now.top() > before.top())
                << order[i - 1]->objectName().toStdString() << " before "
                << order[i]->objectName().toStdString();
        }
    }
}

TEST_F(KeyboardTest, TheButtonGetsTheKeyboardBackWhenItsCommandEnds) {
    auto* draw = tree->findChild<QWidget*>("cmdDraw");
    auto* text = tree->findChild<QWidget*>("Text1");
    draw->setFocus();
    Run([&] { EXPECT_FALSE(draw->hasFocus()); });
    EXPECT_TRUE(draw->hasFocus());
    Run([&] { text->setFocus(); });
    EXPECT_TRUE(text->hasFocus()) << "unless the person went on somewhere else";
    auto* refresh = tree->findChild<QWidget*>("cmdRefresh");
    refresh->setFocus();
    QTest::keyClick(refresh, Qt::Key_Return);
    UiApp::Settle();
    EXPECT_TRUE(refresh->hasFocus());
    auto* down = tree->findChild<QWidget*>("cmdMove3");
    down->setFocus();
    QTest::keyClick(down, Qt::Key_Return);
    EXPECT_TRUE(tree->findChild<QWidget*>("Tview")->hasFocus()) << "paging gives it to the tree";
}

TEST_F(KeyboardTest, AWheelOverAClosedListChangesNothing) {
    ui.Choose("mnuColors");
    for (const char* name : {"LayoutTypes", "cboSkinSchemes", "cboStartUpForm"}) {
        auto* list = ui.Find<QComboBox>(name);
        const int before = list->currentIndex();
        Wheel(*list);
        EXPECT_EQ(list->currentIndex(), before) << name;
    }
}

TEST_F(KeyboardTest, ALayoutIsPickedInTheOpenListOrByReturn) {
    LayoutTypes list(nullptr);
    int picked = 0;
    QObject::connect(&list, &LayoutTypes::Picked, [&] { ++picked; });
    list.show();
    list.activateWindow();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_R, Qt::Key_End})
        QTest::keyClick(&list, key);
    EXPECT_EQ(list.currentText(), "CircularDeep");
    EXPECT_EQ(picked, 0);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(picked, 1);
    list.showPopup();
    QTest::keyClick(list.view(), Qt::Key_Up);
    EXPECT_EQ(picked, 1);
    QTest::keyClick(list.view(), Qt::Key_Return);
    EXPECT_EQ(picked, 2);
    EXPECT_EQ(list.currentText(), "CircularSimpleHV");
    list.showPopup();
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.view()->isVisible(); }));
    const QRect first = list.view()->visualRect(list.model()->index(0, 0));
    QTest::mouseClick(list.view()->viewport(), Qt::LeftButton, {}, first.center());
    EXPECT_EQ(picked, 3);
    EXPECT_EQ(list.currentIndex(), 0);
}

TEST_F(KeyboardTest, AnEmptyTreeSaysWhatToDoNext) {
    auto* view = tree->findChild<cTreeView*>("Tview");
    const auto ink = [view] {
        const QImage picture = view->viewport()->grab().toImage();
        const QColor base = view->palette().color(QPalette::Base);
        int dots = 0;
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y) dots += picture.pixelColor(x, y) != base;
        }
        return dots;
    };
    view->SetTree({});
    EXPECT_GT(ink(), 10);
    view->SetEmptyText({});
    EXPECT_EQ(ink(), 0);
}

}  // namespace
}  // namespace norvelis::ui
