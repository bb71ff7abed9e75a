#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QDesktopServices>
#include <QMenuBar>
#include <QPageSetupDialog>
#include <QStatusBar>
#include <QToolButton>
#include <QUrl>
#include <regex>

#include "ui/screens/browse/frm_treeview.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;

class FrameTest : public ::testing::Test {
  protected:
    UiApp ui;
    void SetUp() override { ui.Start(); }

    std::vector<std::string> EntriesOf(const char* menu) {
        std::vector<std::string> entries;
        for (const QAction* action : ui.Find<QMenu>(menu)->actions()) {
            entries.push_back(action->isSeparator()
                                  ? "-"
                                  : action->objectName().toStdString() + " " + action->text().toStdString());
        }
        return entries;
    }
    bool IsOpen(Screen screen) const {
        const Form* form = ui.frame->Find(screen);
        return form && form->isVisible();
    }
};

TEST_F(FrameTest, TheMenuStandsToTheLetter) {
    std::vector<std::string> columns;
    for (const QAction* action : ui.frame->menuBar()->actions())
        columns.push_back(action->menu()->objectName().toStdString() + " " + action->text().toStdString());
    EXPECT_THAT(columns,
                ElementsAre("mnuOptions &System", "mnu_sys_task IDMS &Report", "ppm_extract &View /  Draw",
                            "mnu_util &Utilities", "mnuWindow &Window", "mnuHelp &Help"));
    EXPECT_THAT(
        EntriesOf("mnuOptions"),
        ElementsAre("mnuColors Setting", "-", "mnuPrinterSetup Printer Setup...", "-", "mnuExit E&xit"));
    EXPECT_THAT(EntriesOf("mnu_sys_task"),
                ElementsAre("-", "mnu_View_IDMS_Report_File View IDMS Report File", "-",
                            "mnu_Classic_Extract_Report Extract IDMS Report"));
    EXPECT_THAT(
        EntriesOf("ppm_extract"),
        ElementsAre("-", "mnuTreeview Record &Treeview", "-", "mnuListview Record &Listview", "-",
                    "mnu_Draw_Fancy_Single Draw All in Single Page", "-",
                    "mnu_Draw_Fancy_Separate Draw in Separate Pages", "-", "mnu_Find &Find Anything"));
    EXPECT_THAT(EntriesOf("mnu_util"),
                ElementsAre("mnu_Scheduler Scheduler", "-", "mnu_sql IDMS to SQL", "-",
                            "mnu_TableProcedures Table Procedures", "-", "mnu_Compare What Changed", "-",
                            "mnu_Publish Publish Schema..."));
    EXPECT_THAT(EntriesOf("mnuHelp"), ElementsAre("mnu_help Help", "-", "mnu_about About"));
}

TEST_F(FrameTest, EntriesOpenTheirScreens) {
    ui.Choose("mnuColors");
    EXPECT_TRUE(IsOpen(Screen::Settings));
    ui.frame->Find(Screen::Treeview)->close();
    ui.Choose("mnuTreeview");
    EXPECT_TRUE(IsOpen(Screen::Treeview));
    EXPECT_THAT(ui.Log(), ::testing::EndsWith("Treeview ---- loadtreeform ---- Done....\r\n"));
    ui.Choose("mnu_about");
    EXPECT_EQ(ui.Find<QLabel>("lblVersion")->text(), "Version 1.2.3");
    ui.Click("cmdOK");
    EXPECT_EQ(ui.frame->findChild<QLabel*>("lblVersion"), nullptr);
    EXPECT_TRUE(ui.host.messages.empty());
}

TEST_F(FrameTest, TheMenuIsReachedByItsUnderlinedLetters) {
    ui.frame->activateWindow();
    QTest::keyClick(ui.frame.get(), Qt::Key_S, Qt::AltModifier);
    QWidget* menu = QApplication::activePopupWidget();
    ASSERT_EQ(menu, ui.Find<QMenu>("mnuOptions"));
    QTest::keyClick(menu, Qt::Key_Return);
    UiApp::Settle();
    EXPECT_TRUE(IsOpen(Screen::Settings));
}

TEST_F(FrameTest, PrinterSetUpMayBeCancelled) {
    bool shown = false;
    WhenWaiting([&](QWidget& waiting) {
        shown = qobject_cast<QPageSetupDialog*>(&waiting) != nullptr;
        QTest::keyClick(&waiting, Qt::Key_Escape);
    });
    ui.Choose("mnuPrinterSetup");
    EXPECT_TRUE(shown);
    EXPECT_TRUE(ui.host.messages.empty());
}

class Browser : public QObject {
    Q_OBJECT
  public:
    QUrl opened;
  public slots:
    void Open(const QUrl& url) { opened = url; }
};

TEST_F(FrameTest, HelpOpensItsPagesInTheBrowser) {
    Browser browser;
    QDesktopServices::setUrlHandler("file", &browser, "Open");
    ui.Choose("mnu_help");
    QDesktopServices::unsetUrlHandler("file");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(::testing::HasSubstr("online only")));
    EXPECT_EQ(browser.opened.toLocalFile().toStdString(), ui.folder.Path("help/index.html"));
    DeleteFile(ui.folder.Path("help/index.html"));
    ui.Choose("mnu_help");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("The help pages are missing:\r\n" + ui.folder.Path("help/index.html")));
}

TEST_F(FrameTest, EveryLinkAndPictureOfTheHelpIsThere) {
    const std::string help = ui.folder.Path("help/");
    const std::regex reference("(?:href|src)=\"([^\"]+)\"");
    int seen = 0;
    for (const std::string& page : FilesIn(help)) {
        if (!page.ends_with(".html")) continue;
        const std::string text = ReadFile(help + page);
        for (std::sregex_iterator match(text.begin(), text.end(), reference), end; match != end;
             ++match, ++seen)
            EXPECT_TRUE(FileExists(help + (*match)[1].str())) << page << ": " << (*match)[1];
    }
    EXPECT_GT(seen, 20);
}

TEST_F(FrameTest, TheWindowMenuListsOpenScreensAndBringsThemBack) {
    ui.Choose("mnuColors");
    auto* menu = ui.Find<QMenu>("mnuWindow");
    emit menu->aboutToShow();
    emit menu->aboutToShow();
    ASSERT_GT(menu->actions().size(), 2);
    EXPECT_TRUE(menu->actions()[2]->isSeparator()) << "the commands that arrange them";
    EXPECT_EQ(menu->actions()[0]->text(), "&1 RECORDS TREEVIEW");
    EXPECT_EQ(menu->actions()[1]->text(), "&2 SETTINGS");
    EXPECT_FALSE(menu->actions()[0]->isChecked());
    EXPECT_TRUE(menu->actions()[1]->isChecked());
    menu->actions()[0]->trigger();
    EXPECT_EQ(ui.frame->Area().Active(), ui.frame->Find(Screen::Treeview));
}

TEST_F(FrameTest, ExitAsksClosesTheStoreAndUnloads) {
    int unloaded = 0;
    QObject::connect(ui.frame.get(), &mdiMainMenu::Unloaded, [&] { ++unloaded; });
    ui.host.answers = {Answer::No};
    ui.Choose("mnuExit");
    EXPECT_TRUE(ui.frame->isVisible());
    EXPECT_TRUE(ui.app.gConnection);
    EXPECT_EQ(ui.host.messages.back().title, "Exit System...");
    ui.Choose("mnuExit");
    EXPECT_FALSE(ui.frame->isVisible());
    EXPECT_FALSE(ui.app.gConnection);
    EXPECT_EQ(unloaded, 1);
}

TEST_F(FrameTest, PositionAndStateAreSavedInTwipsAndComeBack) {
    ui.frame->setGeometry(QRect(40, 30, 700, 500));
    UiApp::Settle();
    const QPoint place = ui.frame->pos();
    ui.frame->close();
    EXPECT_EQ(ui.Ini("mdiMainMenu", "WindowState"), "0");
    EXPECT_EQ(ui.Ini("mdiMainMenu", "Width"), "10500");
    EXPECT_EQ(ui.Ini("mdiMainMenu", "Height"), "7500");
    EXPECT_EQ(ui.Ini("mdiMainMenu", "Left"), std::to_string(place.x() * 15));

    ui.SetGoodSettings();
    ui.Start();
    EXPECT_EQ(ui.frame->size(), QSize(700, 500));
    EXPECT_EQ(ui.frame->pos(), place);
    ui.frame->showMaximized();
    UiApp::Settle();
    ui.frame->close();
    EXPECT_EQ(ui.Ini("mdiMainMenu", "WindowState"), "2");
    EXPECT_EQ(ui.Ini("mdiMainMenu", "Width"), "10500") << "the old geometry stays";
}

TEST_F(FrameTest, APlaceOutsideEveryScreenIsNotTaken) {
    ui.frame->close();
    for (const char* key : {"Left", "Top"})
        WriteINIValue("mdiMainMenu", key, "-900000", ui.folder.Path("INI/Local.Ini"));
    ui.SetGoodSettings();
    ui.Start();
    EXPECT_GE(ui.frame->pos().x(), 0);
}

TEST_F(FrameTest, ExtractionRunsToItsEndWhileTheWindowLives) {
    bool sawBars = false, sawDisabled = false;
    auto* tree = ui.frame->Find(Screen::Treeview);
    QTimer observer;
    QObject::connect(&observer, &QTimer::timeout, [&] {
        sawBars = sawBars || tree->findChild<QWidget*>("vbalProgressBar1")->isVisible();
        sawDisabled =
            sawDisabled || !ui.frame->findChild<QAction*>("mnu_Classic_Extract_Report")->isEnabled();
    });
    observer.start(0);
    ui.host.everyTurn = true;
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_THAT(
        ui.host.TakeTexts(),
        ElementsAre(
            "Are you sure you want to extract IDMS report?", "Delete all dictionaries and extract report?",
            "Done Extracting Records from report file: \r\n" + ui.folder.Path("reportfiles/empschm.text") +
                "\r\n into Access File:\r\n" + ui.folder.Path("Database/records.mdb")));
    EXPECT_TRUE(sawBars);
    EXPECT_TRUE(sawDisabled);
    EXPECT_TRUE(ui.Find<QAction>("mnu_Classic_Extract_Report")->isEnabled());
    EXPECT_FALSE(tree->findChild<QWidget*>("vbalProgressBar1")->isVisible());
    EXPECT_EQ(ui.Find<QLabel>("lblStatus")->text(), "");
    EXPECT_GT(ui.Find<QAbstractItemView>("Tview")->model()->rowCount(), 5);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(FrameTest, ClosingInTheMiddleOfAnExtractionWaitsForItsEnd) {
    auto* status = ui.Find<QLabel>("lblStatus");
    bool asked = false;
    QTimer person;
    QObject::connect(&person, &QTimer::timeout, [&] {
        if (asked || !ui.frame->Context().commands.Busy() ||
            !status->text().startsWith("Extracting Record: "))
            return;
        asked = true;
        EXPECT_FALSE(ui.frame->close());
        EXPECT_TRUE(ui.frame->isVisible());
        EXPECT_EQ(ui.frame->statusBar()->currentMessage(),
                  "The window closes when the running command has ended.");
    });
    person.start(0);
    ui.host.everyTurn = true;
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_TRUE(asked);
    EXPECT_THAT(ui.host.messages.back().text, ::testing::StartsWith("Done Extracting Records"));
    EXPECT_FALSE(ui.frame->isVisible());
    EXPECT_FALSE(ui.app.gConnection);
    ui.SetGoodSettings();
    EXPECT_EQ(ui.app.gConnection->Count("Select count(*) FROM Record_Details"), 14);
}

TEST_F(FrameTest, AWaitingCloseThatIsCancelledIsForgotten) {
    ui.Choose("mnuColors");
    ui.Click("imgBackSelected3");
    ui.host.answers = {Answer::Cancel, Answer::No};
    ui.frame->Context().commands.Run({"Test", Screen::Treeview}, [&] { ui.frame->close(); });
    UiApp::Settle();
    EXPECT_TRUE(ui.frame->isVisible());
    EXPECT_EQ(ui.frame->statusBar()->currentMessage(), "");
    ui.frame->Context().commands.Run({"Test", Screen::Treeview}, [] {});
    UiApp::Settle();
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Save changes before exiting?"));
    EXPECT_TRUE(ui.frame->isVisible());
    ui.frame->close();
}

TEST_F(FrameTest, ASecondLongCommandIsRefusedByTheNameOfTheFirst) {
    auto* tree = ui.Find<QAbstractItemView>("Tview");
    ui.host.during = [&](const Message& message) {
        if (message.buttons == Buttons::YesNo) QTest::keyClick(tree, Qt::Key_F5);
    };
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_THAT(
        ui.host.TakeTexts(),
        ElementsAre("Are you sure you want to extract IDMS report?", "Extract IDMS Report is still running.",
                    "Delete all dictionaries and extract report?", "Extract IDMS Report is still running.",
                    ::testing::StartsWith("Done Extracting Records")));
    ui.host.during = {};
    QTest::keyClick(tree, Qt::Key_F5);
    EXPECT_TRUE(ui.host.messages.empty());
}

TEST_F(FrameTest, ProgressIsShownByTheScreenThatTheCommandNames) {
    ui.Choose("mnuColors");
    auto* status = ui.Find<QLabel>("lblStatus");
    const auto report = [&](Screen screen, const char* text) {
        ui.frame->Context().commands.Run({"Test", screen}, [&] { ui.host.Status(text); });
        UiApp::Settle();
        return status->text();
    };
    EXPECT_EQ(report(Screen::Treeview, "seen"), "seen");
    EXPECT_EQ(report(Screen::Settings, "a screen without bars"), "seen");
    EXPECT_EQ(report(Screen::Listview, "a screen that is not open"), "seen");
}

TEST_F(FrameTest, AFailureThatNoHandlerTookEndsTheProgram) {
    const std::string text = ReadFile(ui.folder.Path("reportfiles/empschm.text"));
    WriteFile(ui.folder.Path("cut.text"), text.substr(0, text.find("RECORD NAME........ ") + 60));
    setreportlocation(ui.app, ui.folder.Path("cut.text"));
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_THAT(ui.failures, ElementsAre(::testing::HasSubstr("Input past end of file")));
    EXPECT_FALSE(ui.frame->Context().commands.Busy());
}

}  // namespace
}  // namespace norvelis::ui

#include "frame_test.moc"
