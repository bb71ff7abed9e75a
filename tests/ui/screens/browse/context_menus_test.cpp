#include <gmock/gmock.h>

#include <QAction>
#include <QClipboard>

#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::Contains;

class ContextMenusTest : public ::testing::Test {
  protected:
    UiApp ui;
    cTreeView* tree = nullptr;

    void SetUp() override {
        ui.Start();
        ui.Choose("mnu_Classic_Extract_Report");
        tree = ui.frame->Find(Screen::Treeview)->findChild<cTreeView*>("Tview");
    }
    /// The command of that caption, without mnemonics and keys.
    static QAction* Command(const QWidget* control, const QString& caption) {
        for (QAction* action : control->actions()) {
            if (action->text().remove('&').section('\t', 0, 0) == caption) return action;
        }
        ADD_FAILURE() << "no " << caption.toStdString();
        return nullptr;
    }
};

TEST_F(ContextMenusTest, TheTreeOffersItsButtonsAndWhatTheMenuHasForIt) {
    for (const char* caption :
         {"Open record", "Copy name", "Expand all", "Collapse all", "Refresh", "Larger tree",
          "Extract IDMS Report", "Draw All in Single Page", "Draw in Separate Pages"})
        EXPECT_TRUE(Command(tree, caption)->isEnabled()) << caption;
    const int lines = tree->model()->rowCount();
    Command(tree, "Collapse all")->trigger();
    EXPECT_EQ(tree->model()->rowCount(), 1);
    Command(tree, "Expand all")->trigger();
    EXPECT_EQ(tree->model()->rowCount(), lines);
    ui.frame->Context().commands.Run({"A command", Screen::Treeview}, [this] {
        EXPECT_FALSE(Command(tree, "Refresh")->isEnabled());
        EXPECT_FALSE(Command(tree, "Draw in Separate Pages")->isEnabled());
        EXPECT_TRUE(Command(tree, "Collapse all")->isEnabled());
    });
    EXPECT_TRUE(Command(tree, "Refresh")->isEnabled());
}

TEST_F(ContextMenusTest, TheRightButtonSelectsTheNodeThatItsMenuIsFor) {
    const NodeIndex node = tree->Tree().FirstOf("INSTRUMENT");
    tree->EnsureVisible(node);
    const QModelIndex line = tree->model()->index(static_cast<int>(node), 0);
    ASSERT_EQ(line.data().toString(), "INSTRUMENT");
    QTest::mouseClick(tree->viewport(), Qt::RightButton, {}, tree->visualRect(line).center());
    EXPECT_EQ(tree->SelectedNode(), node);
    EXPECT_EQ(ui.frame->Find(Screen::IsolateView), nullptr) << "it is no click";
    Command(tree, "Copy name")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "INSTRUMENT");
    Command(tree, "Open record")->trigger();
    UiApp::Settle();
    ASSERT_NE(ui.frame->Find(Screen::IsolateView), nullptr);
    EXPECT_TRUE(ui.frame->Find(Screen::IsolateView)->isVisible());
}

}  // namespace
}  // namespace norvelis::ui
