#include <gmock/gmock.h>

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPrintDialog>
#include <QPrinter>
#include <fstream>

#include "ui/controls/c_tree_view.h"
#include "ui/controls/picture_controls.h"
#include "ui/screens/viewers/report_view.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class ReportViewerTest : public ::testing::Test {
  protected:
    UiApp ui;
    std::string report = ui.folder.Path("reportfiles/empschm.text");

    void SetUp() override { ui.Start(); }
    void Open() { ui.Choose("mnu_View_IDMS_Report_File"); }
    Form* Viewer() const { return ui.frame->Find(Screen::ReportViewer); }
    template <typename T>
    T& On(const char* name) const {
        return *Viewer()->findChild<T*>(name);
    }
    ReportView& View() const { return On<ReportView>("RichTextBox1"); }
    std::string Status() const { return On<QLabel>("lblStatus").text().toStdString(); }
    void UntilStatus(const std::string& words) const {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Status().find(words) != std::string::npos; }, 60'000))
            << words << " is not " << Status();
    }
    void Find(const char* text, int key = Qt::Key_Return) const {
        auto& box = On<QLineEdit>("txtFind");
        if (box.text() != text) box.setText(text);
        QTest::keyClick(&box, static_cast<Qt::Key>(key));
    }
    std::string Marked() const {
        QTest::keyClick(&View(), Qt::Key_C, Qt::ControlModifier);
        return QGuiApplication::clipboard()->text().toStdString();
    }
};

TEST_F(ReportViewerTest, WhatIsWrongWithTheReportIsSaid) {
    const std::string invalid = ui.folder.Path("invalid");
    WriteFile(invalid, std::string("\0\x01 binary", 9));
    for (const auto& [path, words] :
         {std::pair(std::string(), std::string("IDMS Schema Report file has not been set.")),
          std::pair(ui.folder.Path("none"), "IDMS Schema Report File :" + ui.folder.Path("none") +
                                                "\r\ndoes not exist. Please set it."),
          std::pair(invalid, "Invalid IDMS Schema Report File :" + invalid + "\r\nAction terminated")}) {
        setreportlocation(ui.app, path);
        Open();
        EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(words));
        EXPECT_FALSE(Viewer()->isVisible());
    }
}

TEST_F(ReportViewerTest, RecordsSearchAndLinesLeadToTheirPlaces) {
    Open();
    UntilStatus("429 lines, ");
    EXPECT_EQ(On<QLabel>("lblLocation").text().toStdString(),
              "IDMS Schema Report File location is:\n" + report);
    auto& records = On<QListWidget>("lstRecords");
    records.setCurrentItem(records.findItems("SUPPLIER", Qt::MatchExactly).at(0));
    EXPECT_EQ(View().FirstLine(), 119u);

    Find("supplier-phone");
    EXPECT_EQ(Status(), "Line 133, column 5");
    EXPECT_EQ(Marked(), "SUPPLIER-PHONE");
    Find("supplier", Qt::Key_F3);
    EXPECT_THAT(Status(), StartsWith("Line 134, "));
    for (int i = 0; i < 2; ++i) On<SkinButton>("cmdPrevious").click();
    EXPECT_THAT(Status(), StartsWith("Line 132, "));
    Find("idmsrpts release");
    EXPECT_THAT(Status(), HasSubstr("column 2"));
    View().GoTo({428, 0});
    Find("idmsrpts release", Qt::Key_F3);
    EXPECT_EQ(Status(), "Line 1, column 2, found again from the top");
    for (const char* none : {"no such text", "Ω"}) {
        Find(none);
        EXPECT_EQ(Status(), std::string("\"") + none + "\" is not in the report");
    }

    for (const auto& [line, words] :
         {std::pair("500", "The report has 429 lines"), std::pair("0", "A line is a number from 1 on"),
          std::pair("x", "A line is a number from 1 on")}) {
        On<QLineEdit>("txtLine").setText(line);
        On<SkinButton>("cmdGoTo").click();
        EXPECT_EQ(Status(), words);
    }
    On<QLineEdit>("txtLine").setText("132");
    On<SkinButton>("cmdGoTo").click();
    QTest::keyClick(&View(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(Marked(),
                testing::AllOf(StartsWith(" 03 SUPPLIER-COUNTRY-0215 "), testing::EndsWith("99\n")));
}

TEST_F(ReportViewerTest, ARecordOfTheTreeLeadsToItsSectionAndTheViewerComesBackWhereItWas) {
    ui.Choose("mnu_Classic_Extract_Report");
    ui.host.messages.clear();
    auto* tree = ui.frame->Find(Screen::Treeview)->findChild<cTreeView*>("Tview");
    const auto showInReport = [&] {
        for (QAction* action : tree->actions()) {
            if (action->text() == "&Show in report") action->trigger();
        }
    };
    tree->SelectRecord("OFFER");
    showInReport();
    ASSERT_TRUE(Viewer() && Viewer()->isVisible());
    UntilStatus("429 lines, ");
    EXPECT_EQ(View().FirstLine(), 135u);
    View().SetTextSize(9);
    Viewer()->close();
    UiApp::Settle();
    Open();
    UntilStatus("429 lines, ");
    EXPECT_EQ(View().FirstLine(), 135u);
    EXPECT_EQ(View().TextSize(), 9);
    std::string other = ReadFile(report);
    other.replace(other.find("RECORD NAME........ OFFER ") + 20, 5, "BIDS ");
    WriteFile(report, other);
    showInReport();
    UntilStatus("429 lines, ");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("The report has no record OFFER."));
}

TEST_F(ReportViewerTest, AReportThatChangesIsSaidAndDoesNoHarm) {
    Open();
    UntilStatus("429 lines, ");
    std::ofstream(report, std::ios::app)
        << " RECORD NAME........ APPENDED                VERSION 0001        "
           "RLGTH=  180\n"
        << std::string(10'000'000, '\x01') << "needle\n";
    Find("needle");
    UntilStatus("Line 431, column 10000001");
    EXPECT_EQ(Marked(), "needle") << "ten million columns to the right";
    Viewer()->grab();
    EXPECT_EQ(On<QListWidget>("lstRecords").findItems("APPENDED", Qt::MatchExactly).size(), 1);
    std::filesystem::resize_file(report, 2000);
    View().ShowFrom(300);
    EXPECT_THAT(Status(), HasSubstr("was changed"));
    std::filesystem::remove(report);
    Find("needle");
    Viewer()->grab();
    QTest::keyClick(&View(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_THAT(Status(), testing::AnyOf(HasSubstr("is not in the report"), HasSubstr("was removed")));
    EXPECT_THAT(ui.failures, IsEmpty());
}

TEST_F(ReportViewerTest, MarkedLinesArePrinted) {
    std::string bytes = ReadFile(report);
    bytes.insert(bytes.find("\n", bytes.find("SUPPLIER-STREET-0215")),
                 std::string(300, '-') + "FAR-BEHIND" + std::string(5000, '-'));
    WriteFile(report, bytes);
    Open();
    UntilStatus("429 lines, ");
    On<SkinButton>("cmdPrintMarked").click();
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(StartsWith("Mark the lines to print")));
    View().GoTo({110, 0});
    for (int i = 0; i < 20; ++i) QTest::keyClick(&View(), Qt::Key_Down, Qt::ShiftModifier);
    const std::string pdf = ui.folder.Path("lines.pdf");
    WhenWaiting([&](QWidget& waiting) {
        auto& dialog = dynamic_cast<QPrintDialog&>(waiting);
        dialog.printer()->setOutputFormat(QPrinter::PdfFormat);
        dialog.printer()->setOutputFileName(QString::fromStdString(pdf));
        dialog.done(QDialog::Accepted);
    });
    On<SkinButton>("cmdPrintMarked").click();
    EXPECT_THAT(ui.host.messages, IsEmpty());
    const std::string text = pdf + ".txt";
    ASSERT_EQ(std::system(("pdftotext -layout '" + pdf + "' '" + text + "'").c_str()), 0);
    EXPECT_THAT(ReadFile(text),
                testing::AllOf(HasSubstr("empschm.text"), HasSubstr("SUPPLIER-STREET-0215"),
                               HasSubstr("FAR-BEHIND"), HasSubstr("(columns behind 3990 are not printed)"),
                               testing::Not(HasSubstr("SUPPLIER-TOWN"))));
}

}  // namespace
}  // namespace norvelis::ui
