#include <gmock/gmock.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QTableView>
#include <filesystem>

#include "ui/ui_app.h"
#include "ui/until_shown.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// The sample in the dictionary, and a report of it in which a set has another name.
class CompareScreenTest : public ::testing::Test {
  protected:
    UiApp ui;

    void SetUp() override {
        ui.Start();
        ui.Choose("mnu_Classic_Extract_Report");
        std::string text = ReadFile(ui.folder.Path("reportfiles/empschm.text"));
        for (std::size_t at = 0; (at = text.find("SHOP-MASTERS", at)) != std::string::npos;)
            text.replace(at, 12, "SHOP-LEADERS");
        WriteFile(ui.folder.Path("later"), text);
        setreportlocation(ui.app, ui.folder.Path("later"));
        ui.host.messages.clear();
        ui.Choose("mnu_Compare");
    }
    Form& Screen() const { return *ui.frame->Find(norvelis::Screen::Compare); }
    QComboBox& Chooser(const char* name) const { return *Screen().findChild<QComboBox*>(name); }
    QString Cell(int row, int column) const { return Grid().index(row, column).data().toString(); }
    QAbstractItemModel& Grid() const { return *Screen().findChild<QTableView*>("FlxGrid")->model(); }
};

TEST_F(CompareScreenTest, ListsTheDifferencesOfDictionaryAndReport) {
    EXPECT_EQ(Chooser("cboFormer").currentText(), "EMPSCHM");
    EXPECT_EQ(Chooser("cboPresent").currentData().toString().toStdString(), ui.folder.Path("later"))
        << "what the report of the settings would change";
    ui.Click("cmdCompare");
    EXPECT_EQ(Screen().findChild<QLabel*>("lblSummary")->text(), "1 set renamed");
    ASSERT_EQ(Grid().rowCount(), 1);
    EXPECT_EQ(Cell(0, 2), "SHOP-LEADERS");
    EXPECT_EQ(Cell(0, 5), "SHOP-MASTERS");

    // A report that breaks off brings its warnings along; the kinds that there are can be shown alone.
    const std::string text = ReadFile(ui.folder.Path("later"));
    WriteFile(ui.folder.Path("later"), text.substr(0, text.find("RECORD NAME........ PAYMENT")));
    ui.Click("cmdCompare");
    Chooser("cboKind").setCurrentText("report");
    ASSERT_GT(Grid().rowCount(), 0);
    EXPECT_EQ(Cell(0, 1), "warning");
    Chooser("cboKind").setCurrentText("index");
    EXPECT_EQ(Cell(0, 0), "index");
    EXPECT_EQ(Cell(Grid().rowCount() - 1, 0), "index");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre());
}

TEST_F(CompareScreenTest, DrawsTheDifferencesAndShowsThem) {
    ui.Click("cmdDrawDifferences");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Nothing has been compared yet."));
    ui.Click("cmdCompare");
    ui.Click("cmdDrawDifferences");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre());
    const std::string file = ui.folder.Path("visio files/EMPSCHM/EMPSCHM differences.vsd");
    EXPECT_TRUE(FileExists(file));
    Form* viewer = ui.frame->Find(norvelis::Screen::DrawingViewer);
    ASSERT_TRUE(viewer && viewer->isVisible());
    UntilShown(*viewer->findChild<DrawingControl2*>());
}

TEST_F(CompareScreenTest, TheReportIsNotReplacedByThePage) {
    const std::string report = ui.folder.Path("later"), text = ReadFile(report);
    const std::string chosen = ui.folder.Path("page.html");
    std::filesystem::create_symlink(report, chosen);
    ui.Click("cmdCompare");
    WhenWaiting([&chosen](QWidget& waiting) {
        auto& dialog = dynamic_cast<QFileDialog&>(waiting);
        dialog.selectFile(QString::fromStdString(chosen));
        static_cast<QDialog&>(dialog).done(QDialog::Accepted);
    });
    ui.Click("cmdHtml");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre(chosen + " is the report that is compared; choose another file"));
    EXPECT_EQ(ReadFile(report), text);
}

TEST_F(CompareScreenTest, WhatHasGoneIsSaidInWords) {
    ui.app.gConnection->Execute("Delete * FROM Record_Details");
    ui.Click("cmdCompare");
    DeleteFile(ui.folder.Path("later"));
    Chooser("cboFormer").setCurrentIndex(Chooser("cboFormer").count() - 1);
    ui.Click("cmdCompare");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("there is no schema EMPSCHM in the dictionary",
                                                 ui.folder.Path("later") + " does not exist"));
}

}  // namespace
}  // namespace norvelis::ui
