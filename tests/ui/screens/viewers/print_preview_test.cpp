#include <cups/cups.h>
#include <gmock/gmock.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPageSetupDialog>
#include <QScopeGuard>
#include <QSpinBox>

#include "drawing/sheets/print_system.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/picture_controls.h"
#include "ui/screens/viewers/sheets_view.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class PrintPreviewTest : public ::testing::Test {
  protected:
    UiApp ui;
    std::string drawing = ui.folder.Path("visio files/EMPSCHM/EMPSCHM.vsd");

    void SetUp() override {
        ui.Start();
        ui.Choose("mnu_Classic_Extract_Report");
        ui.Choose("mnu_Draw_Fancy_Single");
        ui.host.messages.clear();
    }
    void Open() {
        ui.frame->Context().request(PreviewPrint{drawing});
        UiApp::Settle();
    }
    template <typename T>
    T& On(const char* name) const {
        return *ui.frame->Find(Screen::PrintPreview)->findChild<T*>(name);
    }
    std::string Count() const { return On<QLabel>("lblCount").text().toStdString(); }
    void PressPdf(const std::string& file) {
        WhenWaiting([file](QWidget& waiting) {
            auto& dialog = dynamic_cast<QFileDialog&>(waiting);
            if (file.empty()) return dialog.reject();
            dialog.selectFile(QString::fromStdString(file));
            static_cast<QDialog&>(dialog).done(QDialog::Accepted);
        });
        On<SkinButton>("cmdPdf").click();
        UiApp::Settle();
    }
    static std::string TextOf(const std::string& pdf) {
        if (std::system(("pdftotext -layout '" + pdf + "' '" + pdf + ".txt'").c_str()) != 0) return {};
        return ReadFile(pdf + ".txt");
    }
};

TEST_F(PrintPreviewTest, TheSheetsFollowTheChoiceAndAreRememberedForTheDrawing) {
    Open();
    EXPECT_THAT(Count(), StartsWith("1 sheet: 1 x 1 of A4, "));
    On<QComboBox>("cboFit").setCurrentIndex(1);
    On<QSpinBox>("spnColumns").setValue(3);
    On<QSpinBox>("spnRows").setValue(2);
    On<QComboBox>("cboPaper").setCurrentText("A3");
    EXPECT_THAT(Count(), StartsWith("6 sheets: 3 x 2 of A3, "));
    emit On<SheetsView>("sheets").SheetClicked(5);
    emit On<SheetsView>("sheets").SheetClicked(2);
    EXPECT_EQ(On<QLineEdit>("txtSheets").text(), "2,5");
    EXPECT_THAT(Count(), StartsWith("2 sheets: "));
    const std::string pdf = ui.folder.Path("sheets.pdf");
    PressPdf(pdf);
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Visio document has been sent to the Print"));
    EXPECT_THAT(
        TextOf(pdf),
        testing::AllOf(HasSubstr("sheet 2 of 6, row 1 column 2"), HasSubstr("sheet 5 of 6, row 2 column 2"),
                       HasSubstr("schema version 1 "), testing::Not(HasSubstr("sheet 1 of"))));
    for (const auto& [sheets, words] :
         {std::pair("7", "there is no sheet 7 of 6"), std::pair("x", "3,5-6")}) {
        On<QLineEdit>("txtSheets").setText(sheets);
        EXPECT_THAT(Count(), HasSubstr(words));
        EXPECT_FALSE(On<SkinButton>("cmdPdf").isEnabled());
    }
    ui.frame->Find(Screen::PrintPreview)->close();
    Open();
    EXPECT_THAT(Count(), StartsWith("6 sheets: 3 x 2 of A3, "));
    drawing = ui.folder.Path("visio files/OTHER.vsd");
    std::filesystem::copy_file(ui.folder.Path("visio files/EMPSCHM/EMPSCHM.vsd"), drawing);
    Open();
    EXPECT_THAT(Count(), StartsWith("1 sheet: 1 x 1 of A4, "));
}

TEST_F(PrintPreviewTest, ThePagesChoiceCallsTheModes) {
    Open();
    const std::string pdf = ui.folder.Path("pages.pdf");
    for (const int mode : {1, 2}) {
        On<QComboBox>("cboPages").setCurrentIndex(mode);
        EXPECT_FALSE(On<QLineEdit>("txtSheets").isEnabled());
        PressPdf(pdf);
        EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Visio document has been sent to the Print"));
        EXPECT_THAT(TextOf(pdf), HasSubstr("sheet 1 of 1"));
        DeleteFile(pdf);
    }
}

TEST_F(PrintPreviewTest, EachPageOfADrawingCanBeHadAlone) {
    ui.Choose("mnuPageForArea");
    ui.Choose("mnu_Draw_Fancy_Single");
    ui.host.messages.clear();
    drawing = ui.folder.Path("visio files/EMPSCHM/EMPSCHM by area.vsd");
    Open();
    EXPECT_THAT(Count(), StartsWith("3 sheets: "));
    On<QComboBox>("cboPages").setCurrentText("Page STOCK-AREA");
    EXPECT_THAT(Count(), StartsWith("1 sheet: "));
    const std::string pdf = ui.folder.Path("page.pdf");
    PressPdf(pdf);
    EXPECT_THAT(TextOf(pdf), testing::AllOf(HasSubstr("EMPSCHM area STOCK-AREA"),
                                            testing::Not(HasSubstr("EMPSCHM area SALES-AREA"))));
}

TEST_F(PrintPreviewTest, VeryManySheetsAreAskedAboutAndTroubleIsSaid) {
    Open();
    PressPdf("");
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty()) << "canceled";
    PressPdf(ui.folder.Path("no such folder/sheets.pdf"));
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("no such folder")));
    On<QComboBox>("cboFit").setCurrentIndex(1);
    On<QSpinBox>("spnColumns").setValue(17);
    On<QSpinBox>("spnRows").setValue(3);
    ui.host.answers = {Answer::No};
    PressPdf(ui.folder.Path("many.pdf"));
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Are you sure you want to print 51 sheets?"));
    EXPECT_FALSE(FileExists(ui.folder.Path("many.pdf")));
    WriteFile(drawing, "half");
    Open();
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(StartsWith("This drawing can not be printed: " + drawing)));
    EXPECT_THAT(ui.failures, IsEmpty());
}

TEST_F(PrintPreviewTest, PaperOfThePrinterSetUpIsWhatDrawingsBeginWith) {
    WhenWaiting([](QWidget& waiting) {
        auto& dialog = dynamic_cast<QPageSetupDialog&>(waiting);
        auto* sizes = dialog.findChild<QComboBox*>("pageSizeCombo");
        sizes->setCurrentIndex(sizes->findText("A2", Qt::MatchStartsWith));
        emit sizes->activated(sizes->currentIndex());
        dialog.findChild<QAbstractButton*>("landscape")->click();
        dialog.done(QDialog::Accepted);
    });
    ui.Choose("mnuPrinterSetup");
    Open();
    EXPECT_THAT(Count(), StartsWith("1 sheet: 1 x 1 of A2, landscape"));
}

TEST_F(PrintPreviewTest, ThePrinterSetUpKeepsWhatItsDialogShows) {
    WhenWaiting([](QWidget& waiting) {
        auto& dialog = dynamic_cast<QPageSetupDialog&>(waiting);
        auto* sizes = dialog.findChild<QComboBox*>("pageSizeCombo");
        sizes->setCurrentIndex(sizes->findText("A6", Qt::MatchStartsWith));
        emit sizes->activated(sizes->currentIndex());
        dialog.done(QDialog::Accepted);
    });
    ui.Choose("mnuPrinterSetup");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Drawings are not printed on A6. A4 stays the paper."));
    Open();
    EXPECT_THAT(Count(), StartsWith("1 sheet: 1 x 1 of A4, portrait")) << "landscape would fit better";
}

TEST_F(PrintPreviewTest, ADrawingThatWasChangedOrRemovedIsNotPrintedUnseen) {
    Open();
    const std::string pdf = ui.folder.Path("sheets.pdf");
    WriteFile(drawing, ReadFile(drawing));
    PressPdf(pdf);
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre(StartsWith("The drawing was changed since it was opened: ")));
    EXPECT_FALSE(FileExists(pdf));
    PressPdf(pdf);
    EXPECT_TRUE(FileExists(pdf)) << "it was looked at";
    DeleteFile(pdf);
    DeleteFile(drawing);
    ui.host.answers = {Answer::No};
    PressPdf(pdf);
    EXPECT_FALSE(FileExists(pdf));
    ui.host.answers = {Answer::Yes};
    PressPdf(pdf);
    EXPECT_TRUE(FileExists(pdf)) << "what is on show is still there";
}

TEST_F(PrintPreviewTest, PrintersTakeTheSheetsOrRefuseInWords) {
    const PrintSystem printers;
    if (!printers.Runs()) GTEST_SKIP() << "no print system can be started here";
    cupsSetServer(std::getenv("CUPS_SERVER"));  // It may have been looked for before.
    const auto forget = qScopeGuard([] { cupsSetServer(nullptr); });
    Open();
    auto& list = On<QComboBox>("cboPrinter");
    ASSERT_GE(list.findText("own"), 0);
    list.setCurrentText("own");
    On<SkinButton>("cmdPrint").click();
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Visio document has been sent to the Print"));
    EXPECT_THAT(TextOf(printers.JobFile(1)), HasSubstr("SUPPLIER"));
    list.setCurrentText("closed");
    On<SkinButton>("cmdPrint").click();
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("takes no jobs")));
    const auto document = (*ui.tools->engine->CreateHidden())->Documents()->Open(drawing);
    EXPECT_FALSE(document->Print()) << "the printer chosen last";
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("takes no jobs")));
    list.setCurrentText("own");
    On<SkinButton>("cmdPrint").click();
    EXPECT_TRUE(document->PrintPage(1));
    EXPECT_THAT(TextOf(printers.JobFile(3)), HasSubstr("sheet 1 of 1"));
}

}  // namespace
}  // namespace norvelis::ui
