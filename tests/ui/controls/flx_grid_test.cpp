#include "ui/controls/flx_grid.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTest>

#include "base/paths.h"
#include "testing/scripted_host.h"
#include "testing/temporary_folder.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;

using Rows = std::vector<std::array<std::string, 3>>;

/// Three columns, cells with the blank at their left that the record grids have, two rows of padding.
class FlxGridTest : public ::testing::Test {
  protected:
    ScriptedHost host;
    FlxGrid grid{"Grid", "LVL|NAME|PICTURE", host, nullptr};

    void SetUp() override {
        grid.resize(400, 300);
        grid.SetRows(Rows{{" 02", " SERIAL", " X(10)"},
                          {" 10", " Weight", " -9(3)"},
                          {" 3", " AREA", ""},
                          {" ", " ", " "},
                          {" ", " ", " "}});
        QGuiApplication::clipboard()->clear();
    }
    QAction* Command(const QString& caption) {
        for (QAction* action : grid.actions()) {
            if (action->text().remove('&') == caption) return action;
        }
        ADD_FAILURE() << caption.toStdString();
        return nullptr;
    }
    void Click(int row, int column, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, keys,
                          grid.visualRect(grid.model()->index(row, column)).center());
    }
    void ClickHeading(int column) {
        const QHeaderView& header = *grid.horizontalHeader();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                          QPoint(header.sectionViewportPosition(column) + 5, 5));
    }
    std::vector<std::string> Column(int column) {
        std::vector<std::string> cells;
        for (int row = 0; row < grid.model()->rowCount(); ++row)
            cells.push_back(grid.model()->index(row, column).data().toString().toStdString());
        return cells;
    }
    static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
};

TEST_F(FlxGridTest, ACopyIsWhatIsSelectedWithoutTheBlanksAtTheLeft) {
    grid.show();
    grid.activateWindow();
    grid.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
    Click(0, 1);
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), "SERIAL");
    Click(1, 2, Qt::ShiftModifier);
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), "SERIAL\tX(10)\nWeight\t-9(3)");
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Clipboard(), "NAME\tPICTURE\nSERIAL\tX(10)\nWeight\t-9(3)");
    Click(0, 0);
    Click(2, 1, Qt::ControlModifier);
    Command("Copy")->trigger();
    EXPECT_EQ(Clipboard(), "02\t\n\tAREA") << "cells that are not selected are empty";
    QTest::keyClick(&grid, Qt::Key_Space, Qt::ShiftModifier);
    Command("Copy")->trigger();
    EXPECT_EQ(Clipboard(), "02\tSERIAL\tX(10)\n3\tAREA\t");
    QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
    Command("Copy")->trigger();
    EXPECT_EQ(Clipboard(), "02\tSERIAL\tX(10)\n10\tWeight\t-9(3)\n3\tAREA\t") << "without the padding";
}

TEST_F(FlxGridTest, TheStripAtTheLeftSelectsRowsAndTheCornerAll) {
    grid.show();
    const auto press = [&](int row, Qt::KeyboardModifiers keys) {
        QHeaderView& strip = *grid.verticalHeader();
        QTest::mouseClick(strip.viewport(), Qt::LeftButton, keys,
                          QPoint(5, strip.sectionViewportPosition(row) + 5));
    };
    press(1, {});
    EXPECT_EQ(grid.SelectedText(false), "10\tWeight\t-9(3)");
    press(2, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedText(false), "10\tWeight\t-9(3)\n3\tAREA\t");
    QTest::mouseClick(grid.findChild<QAbstractButton*>(), Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_EQ(grid.selectionModel()->selectedIndexes().size(), 15);
}

TEST_F(FlxGridTest, NothingSelectedIsNothingToCopy) {
    EXPECT_FALSE(Command("Copy")->isEnabled());
    grid.selectAll();
    EXPECT_TRUE(Command("Copy")->isEnabled());
    grid.SetRows(Rows{});
    EXPECT_FALSE(Command("Copy with headings")->isEnabled());
}

TEST_F(FlxGridTest, AGridIsSavedAsCsvAsItIsShown) {
    const TemporaryFolder folder;
    const std::string file = folder.Path("grid.csv");
    host.inputs = {std::nullopt, file, file, folder.Path("none/grid.csv")};
    Command("Save as CSV...")->trigger();
    EXPECT_FALSE(FileExists(file));
    Command("Save as CSV...")->trigger();
    EXPECT_EQ(ReadFile(file), "LVL,NAME,PICTURE\r\n02,SERIAL,X(10)\r\n10,Weight,'-9(3)\r\n3,AREA,\r\n");
    grid.AllowSorting();
    grid.SetRows(Rows{{"2", "b", ""}, {"1", "\xC3\x84", ""}});
    grid.sortByColumn(0, Qt::AscendingOrder);
    Command("Save as CSV...")->trigger();
    EXPECT_EQ(ReadFile(file), "\xEF\xBB\xBFLVL,NAME,PICTURE\r\n1,\xC3\x84,\r\n2,b,\r\n");
    EXPECT_TRUE(host.messages.empty());
    Command("Save as CSV...")->trigger();
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_NE(host.messages[0].text.find("none/grid.csv"), std::string::npos);
}

TEST_F(FlxGridTest, HeadingsSortOnlyWhereTheOrderSaysNothing) {
    grid.show();
    ClickHeading(0);
    EXPECT_THAT(Column(0), ElementsAre(" 02", " 10", " 3", " ", " "));
    EXPECT_EQ(grid.SelectedText(false), "02\n10\n3") << "it selects the column";

    grid.AllowSorting();
    grid.SetRows(Rows{{" 10", "b", "x"}, {" 9", "A", "y"}, {" n", "a", "z"}, {" 010", "B", ""}});
    EXPECT_THAT(Column(0), ElementsAre(" 10", " 9", " n", " 010"));
    Click(0, 2);
    ClickHeading(0);
    EXPECT_THAT(Column(0), ElementsAre(" 9", " 10", " 010", " n")) << "numbers first, equal ones as given";
    EXPECT_EQ(grid.SelectedText(false), "x") << "the selection goes with its cell";
    ClickHeading(0);
    EXPECT_THAT(Column(0), ElementsAre(" n", " 10", " 010", " 9"));
    ClickHeading(0);
    EXPECT_THAT(Column(0), ElementsAre(" 10", " 9", " n", " 010"));
    Click(1, 1);
    Command("Sort up by this column")->trigger();
    EXPECT_THAT(Column(1), ElementsAre("A", "a", "b", "B"));
    grid.SetRows(Rows{{"", "z", ""}, {"", "y", ""}});
    EXPECT_THAT(Column(1), ElementsAre("y", "z")) << "rows that come later are sorted too";
    Command("Order as given")->trigger();
    EXPECT_THAT(Column(1), ElementsAre("z", "y"));
}

TEST_F(FlxGridTest, TheLastColumnFillsTheGridAndIsWholeInANarrowOne) {
    grid.show();
    EXPECT_EQ(grid.horizontalHeader()->length(), grid.viewport()->width());
    grid.horizontalHeader()->resizeSection(0, 90);
    EXPECT_EQ(grid.horizontalHeader()->length(), grid.viewport()->width());
    grid.resize(60, 300);
    EXPECT_GE(grid.columnWidth(2), grid.fontMetrics().horizontalAdvance("PICTURE"));
}

TEST_F(FlxGridTest, RowsThatComeLittleByLittleAreSortedAtTheirEnd) {
    const TemporaryFolder folder;
    host.inputs = {folder.Path("grid.csv")};
    grid.AllowSorting();
    grid.sortByColumn(2, Qt::AscendingOrder);
    grid.SetPainted([](const std::string& text) { return text.substr(0, 3); });
    grid.BeginRows({"a|b", "n"});
    grid.AddRows({" whole\nvalue", " 9"});
    grid.sortByColumn(1, Qt::AscendingOrder);
    grid.AddRows({" x", " 8", "", ""});
    EXPECT_THAT(Column(1), ElementsAre(" 9", " 8", ""));
    EXPECT_THAT(Column(0), ElementsAre(" wh", " x", ""));
    grid.EndRows();
    EXPECT_THAT(Column(1), ElementsAre(" 8", " 9", ""));
    Command("Save as CSV...")->trigger();
    EXPECT_EQ(ReadFile(folder.Path("grid.csv")), "a|b,n\r\nx,8\r\n\"whole\nvalue\",9\r\n,\r\n");
    grid.BeginRows({"c"});
    grid.AddRows({" 2", " 1"});
    grid.EndRows();
    EXPECT_THAT(Column(0), ElementsAre(" 2", " 1")) << "the next rows come in their own order";
}

class CountingDelegate : public QStyledItemDelegate {
  public:
    mutable int painted = 0;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        ++painted;
        QStyledItemDelegate::paint(painter, option, index);
    }
};

TEST_F(FlxGridTest, OfAHundredThousandRowsThoseInViewArePainted) {
    Rows rows;
    for (int i = 0; i < 100'000; ++i)
        rows.push_back(
            {std::to_string(99'999 - i), i == 500 ? "THE-WIDEST-OF-ALL" : "iiiiiiiiiiiiiiiiiii", ""});
    CountingDelegate delegate;
    grid.setItemDelegate(&delegate);
    grid.AllowSorting();
    grid.SetRows(rows);
    grid.show();
    EXPECT_GE(grid.columnWidth(1), grid.fontMetrics().horizontalAdvance("THE-WIDEST-OF-ALL"));
    grid.selectAll();
    grid.sortByColumn(0, Qt::AscendingOrder);
    grid.scrollToBottom();
    grid.grab();
    EXPECT_THAT(delegate.painted, ::testing::AllOf(::testing::Gt(10), ::testing::Lt(300)));
    const std::string copied = grid.SelectedText(false);
    EXPECT_TRUE(copied.starts_with("0\tiii"));
    EXPECT_EQ(std::count(copied.begin(), copied.end(), '\n'), 99'999);
}

}  // namespace
}  // namespace norvelis::ui
