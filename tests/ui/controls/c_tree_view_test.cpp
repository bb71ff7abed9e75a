#include "ui/controls/c_tree_view.h"

#include <gmock/gmock.h>

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "ui/controls/tree_line_delegate.h"

namespace norvelis::ui {
namespace {

/// One schema of forty records with two members each: EMPSCHM, then REC-0, MEM-A, MEM-B, REC-1 ...
class TreeViewTest : public ::testing::Test {
  protected:
    static constexpr int kRecords = 40;
    static constexpr NodeIndex kNodes = 1 + 3 * kRecords;
    cTreeView view{"Tview", nullptr};

    TreeViewTest() {
        Random random(1);
        RecordTreeBuilder tree(random);
        const NodeIndex schema = tree.Add(kNoNode, tree.Intern("EMPSCHM"));
        for (int i = 0; i < kRecords; ++i) {
            const NodeIndex record = tree.Add(schema, tree.Intern("REC-" + std::to_string(i)));
            tree.Add(record, tree.Intern("MEM-A"));
            tree.Add(record, tree.Intern("MEM-B"));
        }
        view.resize(260, 300);
        view.SetTree(std::move(tree).Complete());
        view.show();
        QApplication::processEvents();
    }
    QRect LineAt(int line) const { return view.visualRect(view.model()->index(line, 0)); }
    QPoint TextPlace(int line) const { return LineAt(line).topLeft() + QPoint(100, 5); }
    QPoint SignPlace(int line, int level) const {
        return LineAt(line).topLeft() +
               QPoint(TreeLineDelegate::kIndentation * level - TreeLineDelegate::kIndentation / 2, 5);
    }
    void Press(Qt::Key key) { QTest::keyClick(&view, key); }
    int FirstLine() const { return view.indexAt(QPoint(5, 1)).row(); }
    int LineHeight() const { return LineAt(0).height(); }
};

TEST_F(TreeViewTest, ComesUpOpenWithTheFirstNodeSelected) {
    EXPECT_EQ(view.model()->rowCount(), static_cast<int>(kNodes));
    EXPECT_EQ(view.SelectedNode(), 0u);
    EXPECT_EQ(view.model()->index(2, 0).data().toString(), "MEM-A");
    EXPECT_EQ(view.model()->index(1, 0).data(Qt::AccessibleTextRole).toString(), "REC-0, level 2, open");
    EXPECT_EQ(view.model()->index(2, 0).data(Qt::AccessibleTextRole).toString(), "MEM-A, level 3");
}

TEST_F(TreeViewTest, TheSignOpensAndClosesWithoutAClickOnTheNode) {
    QSignalSpy clicks(&view, &cTreeView::NodeClicked);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, SignPlace(1, 2));
    EXPECT_EQ(view.model()->rowCount(), static_cast<int>(kNodes) - 2);
    EXPECT_EQ(view.model()->index(1, 0).data(Qt::AccessibleTextRole).toString(), "REC-0, level 2, closed");
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, SignPlace(1, 2));
    EXPECT_EQ(view.model()->rowCount(), static_cast<int>(kNodes)) << "a double click is one more press";
    EXPECT_EQ(clicks.count(), 0);
    EXPECT_EQ(view.SelectedNode(), 0u);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, SignPlace(2, 3));
    EXPECT_EQ(view.model()->rowCount(), static_cast<int>(kNodes)) << "a node without members has no sign";
}

TEST_F(TreeViewTest, AClickOnTheTextSelectsAndTells) {
    QSignalSpy clicks(&view, &cTreeView::NodeClicked);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, TextPlace(3));
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks[0][0].value<NodeIndex>(), 3u);
    EXPECT_EQ(view.SelectedNode(), 3u);
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, TextPlace(2));
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(TreeViewTest, KeysMoveOpenCloseAndClick) {
    QSignalSpy clicks(&view, &cTreeView::NodeClicked);
    Press(Qt::Key_Right);
    EXPECT_EQ(view.SelectedNode(), 1u) << "into an open branch";
    Press(Qt::Key_Left);
    EXPECT_EQ(view.SelectedNode(), 1u) << "Left closes an open branch first";
    EXPECT_EQ(view.model()->rowCount(), static_cast<int>(kNodes) - 2);
    Press(Qt::Key_Right);
    EXPECT_EQ(view.model()->rowCount(), static_cast<int>(kNodes));
    Press(Qt::Key_Down);
    Press(Qt::Key_Left);
    EXPECT_EQ(view.SelectedNode(), 1u) << "up to the node it hangs from";
    Press(Qt::Key_End);
    EXPECT_EQ(view.SelectedNode(), kNodes - 1);
    Press(Qt::Key_Return);
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks[0][0].value<NodeIndex>(), kNodes - 1);
    QTest::keyClicks(&view, "rec-7");
    EXPECT_EQ(view.Tree().Text(view.SelectedNode()), "REC-7");
}

TEST_F(TreeViewTest, PageKeysMoveByWhatIsInView) {
    const auto inView = static_cast<NodeIndex>(view.viewport()->height() / LineHeight());
    Press(Qt::Key_PageDown);
    EXPECT_EQ(view.SelectedNode(), inView - 1);
    EXPECT_EQ(FirstLine(), 0);
    Press(Qt::Key_PageDown);
    EXPECT_TRUE(view.viewport()->rect().contains(LineAt(static_cast<int>(view.SelectedNode()))));
    Press(Qt::Key_PageUp);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(view.SelectedNode(), 0u);
    Press(Qt::Key_Up);
    EXPECT_EQ(view.SelectedNode(), 0u);
    Press(Qt::Key_Down);
    EXPECT_EQ(view.SelectedNode(), 1u);
    Press(Qt::Key_Home);
    EXPECT_EQ(view.SelectedNode(), 0u);
    EXPECT_EQ(FirstLine(), 0);
}

TEST_F(TreeViewTest, ADragOverLinesSelectsNoneOfThem) {
    QSignalSpy clicks(&view, &cTreeView::NodeClicked);
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, TextPlace(2));
    QTest::mouseMove(view.viewport(), TextPlace(5));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, TextPlace(5));
    EXPECT_EQ(view.SelectedNode(), 2u);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(TreeViewTest, SelectionAndRedSurviveClosingAndOpening) {
    view.Select(5);
    view.MarkRed(5);
    view.CollapseAll();
    EXPECT_EQ(view.model()->rowCount(), 1);
    EXPECT_EQ(view.SelectedNode(), 0u) << "what hides the selected node is selected instead";
    view.ExpandAll();
    EXPECT_EQ(view.model()->index(5, 0).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
    EXPECT_FALSE(view.model()->index(4, 0).data(Qt::ForegroundRole).isValid());
    view.Select(6);
    view.ExpandAll();
    EXPECT_EQ(view.SelectedNode(), 6u);
}

TEST_F(TreeViewTest, PagingScrollsByLinesAndPagesAndReturnsTheKeyboard) {
    const int page = view.viewport()->height() / LineHeight() - 1;
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.setFocus();
    const std::tuple<cTreeView::Scroll, int> steps[] = {{cTreeView::Scroll::LineDown, 1},
                                                        {cTreeView::Scroll::PageDown, 1 + page},
                                                        {cTreeView::Scroll::PageDown, 1 + 2 * page},
                                                        {cTreeView::Scroll::LineUp, 2 * page},
                                                        {cTreeView::Scroll::PageUp, page},
                                                        {cTreeView::Scroll::Top, 0},
                                                        {cTreeView::Scroll::PageUp, 0}};
    for (const auto& [where, first] : steps) {
        view.ScrollView(where);
        EXPECT_EQ(FirstLine(), first) << static_cast<int>(where);
    }
    view.ScrollView(cTreeView::Scroll::Bottom);
    EXPECT_TRUE(view.viewport()->rect().contains(LineAt(static_cast<int>(kNodes) - 1)));
    EXPECT_EQ(view.SelectedNode(), 0u) << "paging selects nothing";
    EXPECT_EQ(view.window()->focusWidget(), &view);
    view.CollapseAll();
    for (const auto& [where, first] : steps) view.ScrollView(where);
    EXPECT_EQ(FirstLine(), 0);
}

TEST_F(TreeViewTest, OpeningABranchLeavesTheViewWhereItIs) {
    view.ScrollView(cTreeView::Scroll::PageDown);
    view.ScrollView(cTreeView::Scroll::PageDown);
    const int first = FirstLine();
    const int record = (first / 3 + 2) * 3 + 1;
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, SignPlace(record, 2));
    EXPECT_EQ(view.model()->rowCount(), static_cast<int>(kNodes) - 2);
    EXPECT_EQ(FirstLine(), first);
}

TEST_F(TreeViewTest, ADeepNodeComesIntoViewSideways) {
    Random random(1);
    RecordTreeBuilder deep(random);
    NodeIndex node = kNoNode;
    for (int i = 0; i < 60; ++i) node = deep.Add(node, deep.Intern("LEVEL-" + std::to_string(i)));
    view.SetTree(std::move(deep).Complete());
    view.ExpandAll();
    QApplication::processEvents();
    view.Select(59);
    const int left = TreeLineDelegate::TextLeft(60) - view.horizontalScrollBar()->value();
    EXPECT_GE(left, 0);
    EXPECT_LT(left, view.viewport()->width());
    view.Select(0);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0);
}

TEST_F(TreeViewTest, TellsWhereTheMouseIs) {
    QSignalSpy hovered(&view, &cTreeView::NodeHovered);
    QTest::mouseMove(view.viewport(), TextPlace(4));
    QTest::mouseMove(view.viewport(), TextPlace(4) + QPoint(0, 2));
    ASSERT_GE(hovered.count(), 1);
    EXPECT_EQ(hovered.last()[0].value<NodeIndex>(), 4u);
    view.CollapseAll();
    QTest::mouseMove(view.viewport(), QPoint(50, 200));
    EXPECT_EQ(hovered.last()[0].value<NodeIndex>(), kNoNode) << "below the last line";
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&view, &leave);
    EXPECT_EQ(hovered.last()[0].value<NodeIndex>(), kNoNode);
}

TEST_F(TreeViewTest, TheNodeThatTheKeysReachIsToldLikeTheOneUnderTheMouse) {
    QSignalSpy hovered(&view, &cTreeView::NodeHovered);
    Press(Qt::Key_Down);
    ASSERT_EQ(hovered.count(), 1);
    EXPECT_EQ(hovered[0][0].value<NodeIndex>(), 1u);
    const QPoint place = hovered[0][1].toPoint();
    EXPECT_TRUE(LineAt(1).contains(place));
    EXPECT_GT(place.x(), TreeLineDelegate::TextLeft(2)) << "beside the text";
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    EXPECT_EQ(hovered.count(), 2) << "at the first line there is nothing new";
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(&view, &out);
    EXPECT_EQ(hovered.last()[0].value<NodeIndex>(), kNoNode);
}

TEST_F(TreeViewTest, ARecordIsFoundNearTheSelectedNode) {
    view.Select(7);
    EXPECT_TRUE(view.SelectRecord("REC-2"));
    EXPECT_EQ(view.SelectedNode(), 7u);
    EXPECT_TRUE(view.SelectRecord("MEM-B"));
    EXPECT_EQ(view.SelectedNode(), 3u) << "the first of the schema";
    view.Select(9);
    EXPECT_TRUE(view.SelectRecord("MEM-B"));
    EXPECT_EQ(view.SelectedNode(), 9u) << "the selected node is as near as can be";
    EXPECT_FALSE(view.SelectRecord("NOTHING"));
    EXPECT_EQ(view.SelectedNode(), 9u);
}

}  // namespace
}  // namespace norvelis::ui
