#include "ui/frame/arrange.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QMenuBar>
#include <set>

#include "testing/schema_rows.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

TEST(Tiles, FillTheAreaWithoutOverlapWhereThereIsRoom) {
    for (const QSize area : {QSize(1600, 930), QSize(3840, 2090), QSize(1017, 700)}) {
        for (std::size_t count = 1; count <= 7; ++count) {
            const auto places = Tiles(area, std::vector<QSize>(count, QSize(120, 90)));
            ASSERT_EQ(places.size(), count);
            qint64 covered = 0;
            for (std::size_t i = 0; i < count; ++i) {
                EXPECT_TRUE(QRect(QPoint(), area).contains(places[i]));
                covered += static_cast<qint64>(places[i].width()) * places[i].height();
                for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(places[i].intersects(places[j]));
            }
            EXPECT_EQ(covered, static_cast<qint64>(area.width()) * area.height());
        }
    }
}

TEST(Tiles, NoneIsSmallerThanItCanBe) {
    struct Case {
        const char* what;
        QSize area, smallest;
        std::vector<QRect> places;
    };
    const Case cases[] = {
        {"side by side", {1600, 930}, {780, 400}, {{0, 0, 800, 930}, {800, 0, 800, 930}}},
        {"too narrow for it", {1024, 800}, {780, 350}, {{0, 0, 1024, 400}, {0, 400, 1024, 400}}},
        {"overlapping", {1000, 600}, {780, 350}, {{0, 0, 1000, 350}, {0, 250, 1000, 350}}},
        {"larger than the area", {600, 300}, {780, 350}, {{0, 0, 780, 350}, {0, 0, 780, 350}}}};
    for (const Case& each : cases)
        EXPECT_EQ(Tiles(each.area, {each.smallest, each.smallest}), each.places) << each.what;
    EXPECT_TRUE(Tiles(QSize(100, 100), {}).empty());
}

TEST(Cascade, StartsAgainAtTheCornerWhenTheAreaEnds) {
    const std::vector<QSize> sizes(4, QSize(800, 500));
    EXPECT_EQ(
        Cascade(QSize(900, 600), sizes),
        (std::vector<QRect>{{0, 0, 800, 500}, {40, 40, 800, 500}, {80, 80, 800, 500}, {0, 0, 800, 500}}));
}

class WindowMenuTest : public ::testing::Test {
  protected:
    UiApp ui;
    Form* tree = nullptr;

    void SetUp() override {
        SchemaRows(*ui.app.gConnection).Entry("DEPT");
        ui.Start();
        ui.frame->resize(1700, 1000);
        UiApp::Settle();
        tree = ui.frame->Find(Screen::Treeview);
    }
    void Isolate() {
        auto* view = tree->findChild<QWidget*>("Tview");
        view->setFocus();
        QTest::keyClick(view, Qt::Key_Return);
        UiApp::Settle();
    }
    const ChildArea& Area() const { return ui.frame->Area(); }
};

TEST_F(WindowMenuTest, TiledTheIsolateViewOpensBesideTheTree) {
    ui.Choose("mnuTile");
    EXPECT_EQ(tree->geometry(), Area().rect());
    Isolate();
    const Form* isolate = ui.frame->Find(Screen::IsolateView);
    EXPECT_EQ(tree->x(), 0);
    EXPECT_EQ(isolate->x(), tree->width());
    EXPECT_EQ(isolate->y(), 0);
    EXPECT_EQ(isolate->geometry().right(), Area().width() - 1);
    ui.frame->resize(1800, 900);
    UiApp::Settle();
    EXPECT_EQ(isolate->x(), tree->width()) << "tiles follow the frame";
    EXPECT_EQ(isolate->geometry().bottomRight(), Area().rect().bottomRight());
    ui.Choose("mnuClose");
    EXPECT_EQ(tree->geometry(), Area().rect()) << "what is left fills the area";
}

TEST_F(WindowMenuTest, APersonsArrangementEndsTheTiles) {
    for (const auto& arrange :
         {+[](Form* form) { form->ToggleMaximized(); }, +[](Form* form) { form->BackToOriginalSize(); }}) {
        ui.Choose("mnuTile");
        arrange(tree);
        const QRect place = tree->geometry();
        Isolate();
        EXPECT_EQ(tree->geometry(), place);
        ui.frame->Find(Screen::IsolateView)->close();
    }
}

TEST_F(WindowMenuTest, CascadeShowsEveryCaption) {
    Isolate();
    ui.Choose("mnuColors");
    tree->SetMaximized(true);
    ui.Choose("mnuMinimize");  // The settings.
    ui.frame->Area().Activate(tree);
    ui.Choose("mnuCascade");
    EXPECT_EQ(ui.frame->Find(Screen::IsolateView)->geometry(), QRect(0, 0, 850, 510));
    EXPECT_EQ(tree->geometry(), QRect(40, 40, 850, 510)) << "the active one is in front";
    EXPECT_EQ(Area().children().back(), tree);
    EXPECT_TRUE(Area().IsMinimized(ui.frame->Find(Screen::Settings)));
}

TEST_F(WindowMenuTest, WithoutAnOpenScreenNothingHappens) {
    tree->close();
    for (const char* entry : {"mnuTile", "mnuCascade", "mnuMaximize", "mnuOriginalSize", "mnuMinimize",
                              "mnuNext", "mnuPrevious", "mnuClose"})
        ui.Choose(entry);
    EXPECT_TRUE(Area().OpenForms().empty());
}

TEST_F(WindowMenuTest, EveryCommandHasAShortcutOfItsOwn) {
    std::set<QKeySequence> taken;
    for (const QAction* menu : ui.frame->menuBar()->actions()) {
        for (const QAction* action : menu->menu()->actions()) {
            if (action->isSeparator() || action->isCheckable()) continue;
            const bool hasNone = action->objectName() == "mnu_help";  // F1 is for the screen at hand.
            EXPECT_EQ(action->shortcuts().isEmpty(), hasNone) << action->text().toStdString();
            for (const QKeySequence& keys : action->shortcuts()) {
                EXPECT_FALSE(keys.isEmpty()) << action->text().toStdString();
                EXPECT_TRUE(taken.insert(keys).second) << keys.toString().toStdString();
            }
        }
    }
    EXPECT_GE(taken.size(), 20u);
}

TEST_F(WindowMenuTest, ShortcutsReachTheActiveScreen) {
    ui.frame->activateWindow();
    Isolate();
    Form* isolate = ui.frame->Find(Screen::IsolateView);
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        UiApp::Settle();
    };
    press(Qt::Key_F10, Qt::ControlModifier);
    EXPECT_TRUE(isolate->IsMaximized());
    press(Qt::Key_F5, Qt::ControlModifier);
    EXPECT_EQ(isolate->geometry(), QRect(33, 33, 850, 510));
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Area().Active(), tree);
    press(Qt::Key_M, Qt::ControlModifier);
    EXPECT_TRUE(Area().IsMinimized(tree));
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(isolate->isVisible());
}

}  // namespace
}  // namespace norvelis::ui
