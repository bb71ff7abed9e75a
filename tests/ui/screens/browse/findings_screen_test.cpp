#include <gmock/gmock.h>

#include <QTableView>
#include <QToolButton>
#include <algorithm>

#include "ui/controls/c_tree_view.h"
#include "ui/screens/viewers/report_view.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

/// The sample report, its last record without the heading of its fields.
class FindingsScreenTest : public ::testing::Test {
  protected:
    static constexpr const char* kRecord = "REPAIR";
    UiApp ui;

    void SetUp() override {
        ui.Start();
        ui.host.messages.clear();
    }
    void ExtractWithout(const std::string& lost) {
        const std::string sample = ui.folder.Path("reportfiles/empschm.text");
        std::string text = ReadFile(sample);
        if (!lost.empty()) {
            const std::size_t place =
                text.find(lost, text.find("RECORD NAME........ " + std::string(kRecord)));
            text.erase(place, lost.size());
        }
        WriteFile(ui.folder.Path("report"), text);
        setreportlocation(ui.app, ui.folder.Path("report"));
        ui.Choose("mnu_Classic_Extract_Report");
    }
    bool IsOpen() const {
        const Form* screen = ui.frame->Find(Screen::Findings);
        return screen && screen->isVisible();
    }
    QString Cell(int row, int column) const {
        const auto* grid = ui.frame->Find(Screen::Findings)->findChild<QTableView*>("FlxGrid");
        return grid->model()->index(row, column).data().toString();
    }
};

TEST_F(FindingsScreenTest, OpensBehindTheFinalBoxWhenThereAreWarnings) {
    auto* button = ui.Find<QToolButton>("warnings");
    ExtractWithout("");
    EXPECT_FALSE(IsOpen()) << "the sample has notes alone";
    EXPECT_FALSE(button->isVisible());

    bool boxBeforeList = false;
    ui.host.during = [&](const Message& message) {
        if (message.text.starts_with("Done Extracting")) boxBeforeList = !IsOpen();
    };
    ExtractWithout("0DATA ITEM");
    EXPECT_TRUE(boxBeforeList);
    ASSERT_TRUE(IsOpen());
    EXPECT_EQ(Cell(0, 0), "warning");
    EXPECT_EQ(Cell(0, 1), "EMPSCHM");
    EXPECT_EQ(Cell(0, 3), kRecord);
    EXPECT_EQ(Cell(0, 6), "data-items-missing");
    EXPECT_TRUE(button->isVisible());
    EXPECT_THAT(button->text().toStdString(), StartsWith("1 warning"));

    ui.frame->Find(Screen::Findings)->close();
    button->click();
    EXPECT_TRUE(IsOpen());
}

TEST_F(FindingsScreenTest, AFindingLeadsToItsLineInTheReport) {
    ExtractWithout("0DATA ITEM");
    auto* grid = ui.frame->Find(Screen::Findings)->findChild<QTableView*>("FlxGrid");
    QTest::keyClick(grid, Qt::Key_Return);
    UiApp::Settle();
    const Form* viewer = ui.frame->Find(Screen::ReportViewer);
    ASSERT_TRUE(viewer && viewer->isVisible());
    const auto* view = viewer->findChild<ReportView*>("RichTextBox1");
    EXPECT_EQ(QString::number(view->MarkedFrom().line + 1), Cell(0, 2));

    ui.host.messages.clear();
    WriteFile(ui.folder.Path("report"), ReadFile(ui.folder.Path("report")).substr(0, 4000));
    QTest::keyClick(grid, Qt::Key_Return);
    UiApp::Settle();
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(StartsWith("The report has no line ")));
}

TEST_F(FindingsScreenTest, RepairIsOfferedBehindTheList) {
    const std::string sample = ReadFile(ui.folder.Path("reportfiles/empschm.text"));
    std::string damaged = sample;
    std::ranges::replace(damaged, '\n', '\r');
    WriteFile(ui.folder.Path("report"), damaged);
    setreportlocation(ui.app, ui.folder.Path("report"));
    bool offeredBehindList = false;
    ui.host.during = [&](const Message& message) {
        if (message.text.starts_with("Repair leaves")) offeredBehindList = IsOpen();
    };
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_TRUE(offeredBehindList);
    EXPECT_EQ(ReadFile(ui.folder.Path("report-repaired")), sample);
    EXPECT_FALSE(ui.Find<QToolButton>("warnings")->isVisible());
    EXPECT_NE(ui.Find<cTreeView>("Tview")->Tree().FirstOf(kRecord), kNoNode);
}

TEST_F(FindingsScreenTest, TreesPaintAMarkBehindAnIncompleteRecord) {
    const auto markedPixels = [this] {
        auto* tree = ui.Find<cTreeView>("Tview");
        const QImage picture = tree->viewport()->grab().toImage();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == QColor(214, 137, 16);
        }
        return count;
    };
    ExtractWithout("");
    EXPECT_EQ(markedPixels(), 0);
    ExtractWithout("RLGTH=");
    EXPECT_GT(markedPixels(), 20);
    auto* tree = ui.Find<cTreeView>("Tview");
    const NodeIndex record = tree->Tree().FirstOf(kRecord);
    ASSERT_NE(record, kNoNode) << "the text is as it was";
    const auto* model = dynamic_cast<RecordTreeModel*>(tree->model());
    EXPECT_TRUE(model->IndexOf(record).data(Qt::AccessibleTextRole).toString().contains("incomplete"));
}

}  // namespace
}  // namespace norvelis::ui
