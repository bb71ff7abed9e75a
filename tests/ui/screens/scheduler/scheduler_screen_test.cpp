#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTabWidget>
#include <QTextEdit>
#include <QTimeEdit>

#include "scheduler/jobs.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/text_file_view.h"
#include "ui/screens/scheduler/job_tree_view.h"
#include "ui/ui_app.h"
#include "ui/until_shown.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SchedulerScreenTest : public ::testing::Test {
  protected:
    UiApp ui;
    Form* screen = nullptr;
    const std::string sample = ui.folder.Path("reportfiles/empschm.text");

    void SetUp() override {
        ui.Start();
        Open();
    }
    void Open() {
        ui.Choose("mnu_Scheduler");
        screen = ui.frame->Find(Screen::Scheduler);
        ASSERT_NE(screen, nullptr);
    }
    Connection& Store() const { return *ui.app.gConnection; }
    template <typename T>
    T& Control(const char* name) const {
        return *screen->findChild<T*>(name);
    }
    std::string Text(const char* name) const {
        return Control<QWidget>(name).property("text").toString().toStdString();
    }
    void Type(const char* name, const std::string& text) const {
        Control<QLineEdit>(name).setText(QString::fromStdString(text));
    }
    void Press(const char* name) const {
        Control<QAbstractButton>(name).click();
        UiApp::Settle();
    }
    std::vector<std::string> Future() const {
        std::vector<std::string> dates;
        const auto& list = Control<QListWidget>("lstFuture");
        for (int i = 0; i < list.count(); ++i) dates.push_back(list.item(i)->text().toStdString());
        return dates;
    }
    std::string Words() const { return Control<QTextEdit>("bookingWords").toPlainText().toStdString(); }
    /// Every day at 06:00.
    void CalculateDaily() const {
        Type("txtNumofDays", "1");
        Control<QTimeEdit>("dtpFreqTime").setTime({6, 0});
        Press("cmdCalculate");
    }
    void FillIn(const std::string& name) const {
        Type("txtName", name);
        Type("FilenameRec", sample);
        Type("txtEmail", "dba@example.org");
    }
    std::vector<std::string> Names(const char* tree) const {
        std::vector<std::string> names;
        const auto& jobs = Control<JobTreeView>(tree).Tree();
        for (std::size_t i = 0; i < jobs.Size(); ++i) names.push_back(jobs.At(i).name);
        return names;
    }
    QModelIndex Node(const char* tree, int job) const {
        return Control<JobTreeView>(tree).model()->index(job, 0);
    }
    void Click(const char* tree, QModelIndex node, Qt::KeyboardModifiers keys = {},
               Qt::MouseButton button = Qt::LeftButton) const {
        auto& view = Control<JobTreeView>(tree);
        view.scrollTo(node);
        QTest::mouseClick(view.viewport(), button, keys, view.visualRect(node).center());
        UiApp::Settle();
    }
    void Choose(const char* tree, const char* entry) const {
        for (QAction* action : Control<JobTreeView>(tree).actions()) {
            if (action->text().startsWith(entry)) action->trigger();
        }
        UiApp::Settle();
    }
    void Book(const std::string& name) {
        Job job;
        job.name = name;
        job.tel = "4711";
        job.idmsreport = sample;
        std::vector<std::int64_t> ids;
        CreateJobs(ui.app, job, {"12/1/2026 6:00:00 AM"}, ids);
    }
    /// Of the engine, without waiting for its time.
    void Tick() const {
        QMetaObject::invokeMethod(screen->findChild<QTimer*>("Timer3"), "timeout");
        UiApp::Settle();
    }
    /// Answers the next file dialog.
    static void PickFile(const std::string& file) {
        WhenWaiting([file](QWidget& waiting) {
            auto* dialog = qobject_cast<QFileDialog*>(&waiting);
            ASSERT_NE(dialog, nullptr);
            dialog->selectFile(QString::fromStdString(file));
            QMetaObject::invokeMethod(dialog, "accept");
        });
    }
};

TEST_F(SchedulerScreenTest, OpensWithThreeDatesOfAFreshSchedule) {
    EXPECT_EQ(Text("lblCaption"), "BATCH SCHEDULER");
    EXPECT_EQ(Text("txtDateTime"), "11/24/2026 8:30:00 AM");
    EXPECT_EQ(Text("lblCurrentTime"), "8:30:00 AM");
    EXPECT_EQ(Text("lblCurrentDate"), "11/24/2026");
    EXPECT_EQ(Control<QComboBox>("Combo1").currentText(), "3");
    EXPECT_EQ(Control<QComboBox>("Combo1").count(), 10);
    EXPECT_EQ(Future().size(), 3u);
    EXPECT_EQ(Text("cmdAdd"), "Create");
    EXPECT_FALSE(Control<QWidget>("cmdView").isEnabled());
    EXPECT_TRUE(Control<QAbstractButton>("ProcessedOption1").isChecked());
    EXPECT_THAT(ui.host.messages, IsEmpty());
    ui.clock.now += 1.0 / 24;
    ASSERT_TRUE(QTest::qWaitFor([this] { return Text("lblCurrentTime") == "9:30:00 AM"; }));
}

TEST_F(SchedulerScreenTest, ADaysWork) {
    CalculateDaily();
    EXPECT_EQ(Text("txtNextSchedule"), "11/25/2026 6:00:00 AM");
    EXPECT_EQ(Text("txtNextSchedule2"), "11/25/2026 6:00:00 AM");
    EXPECT_THAT(Future(),
                ElementsAre("11/26/2026 6:00:00 AM", "11/27/2026 6:00:00 AM", "11/28/2026 6:00:00 AM"));
    EXPECT_THAT(Words(), HasSubstr("First booked: Thursday 11/26/2026 6:00:00 AM"));
    Press("cmdAdd");
    EXPECT_TRUE(Control<QWidget>("txtName").hasFocus());
    Type("txtName", "it's \"nightly\"");
    Press("cmdAdd");
    PickFile(sample);
    Press("chooseFile");
    EXPECT_EQ(Text("FilenameRec"), sample);
    ui.frame->activateWindow();
    Press("cmdAdd");
    EXPECT_TRUE(Control<QWidget>("txtTel").hasFocus());
    Type("txtTel", "4711");
    Press("cmdAdd");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("Name required", "Report Name required", "Must Enter TEL or Email",
                            "Creating Schedule completed...", "Schedule(s) added"));
    EXPECT_EQ(Names("tvwKestrimoor").size(), 3u);

    Click("tvwKestrimoor", Node("tvwKestrimoor", 1));
    EXPECT_EQ(Text("lblElement"), "2");
    EXPECT_EQ(Text("cmdAdd"), "Update");
    EXPECT_EQ(Control<QWidget>("Frame4").property("title").toString(), "Schedule Details");
    EXPECT_EQ(Text("txtName"), "it's \"nightly\"");
    EXPECT_FALSE(Control<QWidget>("cmdView").isEnabled());
    Press("ProcessedOption0");
    Type("txtNextSchedule2", "12/24/2026 11:00:00 PM");
    Press("cmdAdd");
    EXPECT_THAT(Names("tvwKestrimoor1"), ElementsAre("it's \"nightly\""));
    EXPECT_EQ(DueText(*FindJob(Store(), 2)), "12/24/2026 11:00:00 PM");
    EXPECT_TRUE(Control<QWidget>("cmdView").isEnabled());

    Click("tvwKestrimoor1", Node("tvwKestrimoor1", 0));
    Press("ProcessedOption1");
    Press("cmdAdd");
    EXPECT_THAT(Names("tvwKestrimoor1"), IsEmpty()) << "it runs again";
    ui.host.answers = {Answer::Yes};
    Press("cmddelete");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("Schedule Updated", "Schedule Updated", "Proceed to Delete schedule id:2?",
                            "Schedule id:2 deleted."));
    EXPECT_EQ(Names("tvwKestrimoor").size(), 2u);
    EXPECT_EQ(Text("lblElement"), "") << "the row is on show no longer";
}

TEST_F(SchedulerScreenTest, CalculateClearsTheFieldsAndFollowsTheCount) {
    CalculateDaily();
    FillIn("nightly");
    auto& count = Control<QComboBox>("Combo1");
    const std::pair<const char*, std::size_t> counts[] = {{"0", 0}, {"", 1}, {"7", 7}, {"12", 12}};
    for (const auto& [text, dates] : counts) {
        count.setEditText(text);
        Press("cmdCalculate");
        EXPECT_EQ(Future().size(), dates) << text;
        EXPECT_EQ(Text("txtName") + Text("FilenameRec") + Text("txtEmail"), "");
    }
    emit count.activated(2);
    EXPECT_EQ(Future().size(), 12u) << "chosen is what the box shows";
    Type("txtDateTime", "soon");
    Press("cmdCalculate");
    EXPECT_EQ(Future().size(), 12u) << "no date changes nothing";
    EXPECT_THAT(ui.host.messages, IsEmpty());
    Type("txtDateTime", "11/24/2026");
    count.setEditText("32768");
    Press("cmdCalculate");
    Type("txtNumofDays", "32768");
    Press("cmdCalculate");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Overflow", "Overflow"));
}

TEST_F(SchedulerScreenTest, AnIdBeyondSixteenBitsIsAnOverflow) {
    Store().Execute("Insert into schedules (scheduleid, name, processed) values (32768, 'late', 0)");
    Press("cmdPopulate");
    Click("tvwKestrimoor", Node("tvwKestrimoor", 0));
    Choose("tvwKestrimoor", "&Delete");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Overflow", "Overflow"));
    EXPECT_TRUE(FindJob(Store(), 32768));
}

TEST_F(SchedulerScreenTest, TheNextDateIsBookedWhenThatIsWanted) {
    CalculateDaily();
    EXPECT_THAT(Words(), HasSubstr("The next date, Wednesday 11/25/2026 6:00:00 AM, is not booked."));
    Press("chkAlsoNext");
    EXPECT_THAT(Words(), HasSubstr("First booked: Wednesday 11/25/2026 6:00:00 AM"));
    FillIn("nightly");
    Press("cmdAdd");
    EXPECT_EQ(DueText(*FindJob(Store(), 1)), "11/25/2026 6:00:00 AM");
    EXPECT_TRUE(FindJob(Store(), 4));
    screen->close();
    UiApp::Settle();
    Open();
    EXPECT_TRUE(Control<QAbstractButton>("chkAlsoNext").isChecked()) << "remembered";
}

TEST_F(SchedulerScreenTest, WhatIsOddIsSaidBeforeItIsStored) {
    EXPECT_THAT(Words(), HasSubstr("The number of days is 0."));
    CalculateDaily();
    Press("optOccurs1");
    EXPECT_THAT(Words(), HasSubstr("has changed since"));
    CalculateDaily();
    EXPECT_THAT(Words(), HasSubstr("No weekday is selected"));
    FillIn("nightly");
    Type("FilenameRec", ui.folder.Path("gone.txt"));
    EXPECT_THAT(Words(), HasSubstr("is missing now."));
    ui.clock.now += 100;
    ui.host.answers = {Answer::No};
    Press("cmdAdd");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("lies in the past and would run at once.")));
    EXPECT_THAT(Words(), HasSubstr("lies in the past"));
    EXPECT_THAT(Names("tvwKestrimoor"), IsEmpty());
}

TEST_F(SchedulerScreenTest, SeveralRowsAreDeletedRunAgainAndCopied) {
    for (const char* name : {"a", "b", "c", "d"}) Book(name);
    Store().Execute("Update schedules set processed = 1 where name < 'd'");
    Press("cmdPopulate");
    Click("tvwKestrimoor", Node("tvwKestrimoor", 0));
    Click("tvwKestrimoor1", Node("tvwKestrimoor1", 0), {}, Qt::RightButton);
    EXPECT_TRUE(Control<QTreeView>("tvwKestrimoor").selectionModel()->selectedIndexes().isEmpty());
    Click("tvwKestrimoor1", Node("tvwKestrimoor1", 1), Qt::ControlModifier);
    Choose("tvwKestrimoor1", "Run &again");
    EXPECT_THAT(Names("tvwKestrimoor"), ElementsAre("a", "b", "d"));
    Click("tvwKestrimoor", Node("tvwKestrimoor", 1));
    Choose("tvwKestrimoor", "&Copy into the editor");
    EXPECT_EQ(Text("txtName"), "b");
    EXPECT_EQ(Text("txtTel"), "4711");
    EXPECT_EQ(Text("lblElement"), "");
    EXPECT_EQ(Text("cmdAdd"), "Create");
    Click("tvwKestrimoor", Node("tvwKestrimoor", 0));
    Click("tvwKestrimoor", Node("tvwKestrimoor", 2), Qt::ShiftModifier);
    Press("cmddelete");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Run 2 schedules again?", "Proceed to Delete 3 schedules?",
                                                 "3 schedules deleted."));
    EXPECT_THAT(Names("tvwKestrimoor"), IsEmpty());
    EXPECT_THAT(Names("tvwKestrimoor1"), ElementsAre("c"));
}

TEST_F(SchedulerScreenTest, FieldsHoldAnyText) {
    for (const std::string& name : {std::string("line\r\nbreak 'quoted'"), std::string(100'000, 'x')}) {
        CalculateDaily();
        FillIn(name);
        Press("cmdAdd");
        const Job stored = ListJobs(Store()).front();
        EXPECT_EQ(stored.name, name);
        Click("tvwKestrimoor", Node("tvwKestrimoor", 0));
        Press("cmdAdd");
        EXPECT_EQ(FindJob(Store(), stored.scheduleid)->name, name);
        Store().Execute("Delete * FROM schedules");
    }
}

TEST_F(SchedulerScreenTest, RowsThatHaveGoneAndChildrenSelectNothing) {
    Book("a");
    Press("cmdPopulate");
    const QModelIndex job = Node("tvwKestrimoor", 0);
    Control<QTreeView>("tvwKestrimoor").expand(job);
    Click("tvwKestrimoor", job.model()->index(0, 0, job));
    EXPECT_EQ(Text("lblElement"), "");
    DeleteJob(Store(), 1);
    QTest::keyClick(&Control<QWidget>("tvwKestrimoor"), Qt::Key_Home);
    QTest::keyClick(&Control<QWidget>("tvwKestrimoor"), Qt::Key_Return);
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("There is no schedule id:1 any more."));
    EXPECT_THAT(Names("tvwKestrimoor"), IsEmpty());
    Press("cmddelete");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Please pick the schedule to delete"));
}

TEST_F(SchedulerScreenTest, SearchShowsTheHitInItsTree) {
    for (const char* name : {"Payroll", "stock"}) Book(name);
    Store().Execute("Update schedules set processed = 1 where name = 'stock'");
    Press("cmdPopulate");
    QTest::keyClick(screen, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Control<QWidget>("Text1").hasFocus());
    QTest::keyClicks(&Control<QWidget>("Text1"), "STOCK");
    EXPECT_EQ(Text("cmdSearch"), "Search");
    Press("cmdSearch");
    EXPECT_EQ(Text("cmdSearch"), "Next");
    const QModelIndex hit = Control<QTreeView>("tvwKestrimoor1").currentIndex();
    EXPECT_EQ(hit.data().toString(), "stock");
    EXPECT_EQ(hit.data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
}

TEST_F(SchedulerScreenTest, ReportLogAndDrawingAreShown) {
    CalculateDaily();
    Press("cmdViewReport");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("IDMS Report File NOT Found:"));
    EXPECT_EQ(Control<QTabWidget>("SSTab1").currentIndex(), 0);
    FillIn("nightly");
    Press("cmdViewReport");
    EXPECT_EQ(Control<QTabWidget>("SSTab1").currentIndex(), 1);
    EXPECT_TRUE(Control<QWidget>("ReportFrame").isVisible());
    auto* report = Control<TextFileView>("RichTextBox2").model();
    ASSERT_TRUE(QTest::qWaitFor([report] { return report->rowCount() == 429; }));
    EXPECT_THAT(report->index(1, 0).data().toString().toStdString(), HasSubstr("SCHEMA=EMPSCHM"));

    Press("cmdViewLogs");
    EXPECT_TRUE(Control<QWidget>("LogFrame").isVisible());
    EXPECT_FALSE(Control<QWidget>("ReportFrame").isVisible());
    const std::string log = ui.folder.Path("AuditLogs/Logfile.txt");
    Press("ViewLogInNP");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("There is no file to view: " + log));
    CreateFolder(ui.folder.Path("AuditLogs"));
    WriteFile(log, "one\ntwo\n");
    Press("cmdRefreshLogs");
    auto* lines = Control<TextFileView>("RichTextBox1").model();
    EXPECT_EQ(lines->rowCount(), 2);
    EXPECT_EQ(lines->index(1, 0).data().toString(), "two");
    Press("ClearLogs");
    EXPECT_EQ(lines->rowCount(), 0);
    EXPECT_EQ(ReadFile(log), "");

    Type("VisioFile", ui.folder.Path("gone.vsd"));
    Press("cmdViewVisio");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("There is no drawing of a run in ")));
}

TEST_F(SchedulerScreenTest, ViewSchemaOpensTheDrawingOfTheRunAndOffersSeveral) {
    ui.Choose("mnu_Classic_Extract_Report");
    ui.Choose("mnu_Draw_Fancy_Single");
    ui.host.messages.clear();
    Book("nightly");
    Store().Execute("Update schedules set processed = 1");
    Press("cmdPopulate");
    Click("tvwKestrimoor1", Node("tvwKestrimoor1", 0));
    Press("cmdView");
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre(HasSubstr("There is no drawing of a run in ")));
    const std::string folder = ui.folder.Path("batchjobs/nightly/");
    CreateFolder(folder);
    const auto shown = [&] {
        return ui.frame->Find(Screen::DrawingViewer)->findChild<DrawingControl2*>()->Src().toStdString();
    };
    std::filesystem::copy_file(ui.folder.Path("visio files/EMPSCHM/EMPSCHM.vsd"), folder + "EMPSCHM.vsd");
    Press("cmdView");
    EXPECT_EQ(shown(), folder + "EMPSCHM.vsd");
    std::filesystem::copy_file(folder + "EMPSCHM.vsd", folder + "OTHER.vsd");
    QTimer::singleShot(0, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(menu->actions().size(), 2);
        menu->setActiveAction(menu->actions().back());
        QTest::keyClick(menu, Qt::Key_Return);
    });
    Press("cmdView");
    EXPECT_EQ(shown(), folder + "OTHER.vsd");
    Type("VisioFile", folder + "OTHER.vsd");
    Press("cmdViewVisio");
    auto& viewer = Control<DrawingControl2>("Viewer1");
    UntilShown(viewer);
    EXPECT_TRUE(viewer.isVisible());
    EXPECT_EQ(viewer.Src().toStdString(), folder + "OTHER.vsd");
}

TEST_F(SchedulerScreenTest, ADefinitionIsSavedAndOpenedAgain) {
    const std::string file = ui.folder.Path("daily.xml");
    CalculateDaily();
    PickFile(file);
    Press("cmdSaveDefinition");
    EXPECT_THAT(ReadFile(file), HasSubstr("Freq_Once_Hr=\"6\""));
    Type("txtNumofDays", "9");
    PickFile(file);
    Press("cmdOpenDefinition");
    EXPECT_EQ(Text("txtNumofDays"), "1");
    EXPECT_THAT(Words(), HasSubstr("has changed since"));
}

TEST_F(SchedulerScreenTest, StartedSchedulesRunDueJobsAtTheSeventeenthTick) {
    Book("nightly");
    Press("cmdPopulate");
    const auto isEnabled = [this](const char* action) {
        return screen->findChild<QAction*>(action)->isEnabled();
    };
    EXPECT_TRUE(isEnabled("mnu_RunSchedules"));
    EXPECT_FALSE(isEnabled("mnu_stopSchedules"));
    ui.Choose("mnu_RunSchedules");
    EXPECT_FALSE(isEnabled("mnu_RunSchedules"));
    const auto& timer = *screen->findChild<QTimer*>("Timer3");
    EXPECT_EQ(timer.interval(), 6000);
    ui.clock.now = ToDateTime({2026, 12, 1, 6, 0, 1});
    for (int tick = 1; tick <= 16; ++tick) Tick();
    EXPECT_THAT(Names("tvwKestrimoor"), ElementsAre("nightly"));
    const auto& state = *screen->findChild<QLabel*>("lblRun");
    EXPECT_EQ(state.text(), "Schedules are started");
    std::vector<QString> during;
    ui.host.eachTurn = [&] {
        if (during.empty() && screen->findChild<QWidget*>("cmdCancel")->isVisible()) during = {state.text()};
    };
    const int counting = timer.timerId();
    Tick();
    ui.host.eachTurn = [] {};
    EXPECT_EQ(timer.timerId(), counting) << "it counts from the last start, not from the end of a run";
    EXPECT_THAT(during, ElementsAre("The scheduled run of nightly is in progress"));
    EXPECT_EQ(state.text(), "Schedules are started");
    EXPECT_THAT(Names("tvwKestrimoor1"), ElementsAre("nightly"));
    EXPECT_TRUE(FileExists(ui.folder.Path("batchjobs/nightly/EMPSCHM.vsd")));
    ui.host.answers = {Answer::No};
    screen->close();
    EXPECT_TRUE(screen->isVisible());
    ui.Choose("mnu_stopSchedules");
    EXPECT_FALSE(timer.isActive());
    screen->close();
    UiApp::Settle();
    EXPECT_EQ(ui.frame->Find(Screen::Scheduler), nullptr);
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Schedules are running. Exit Anyway?"));
}

TEST_F(SchedulerScreenTest, ClosingInARunCancelsItFirst) {
    Book("nightly");
    ui.Choose("mnu_RunSchedules");
    ui.clock.now = ToDateTime({2026, 12, 1, 6, 0, 1});
    for (int tick = 1; tick <= 16; ++tick) Tick();
    bool closed = false;
    ui.host.everyTurn = true;
    ui.host.eachTurn = [&] {
        if (ui.frame->Context().commands.Busy() && !std::exchange(closed, true)) screen->close();
    };
    Tick();
    ui.host.eachTurn = [] {};
    UiApp::Settle();
    EXPECT_TRUE(closed);
    EXPECT_EQ(ui.frame->Find(Screen::Scheduler), nullptr);
    EXPECT_FALSE(FindJob(Store(), 1)->processed) << "the row stays due";
    EXPECT_FALSE(FileExists(ui.folder.Path("batchjobs/nightly/EMPSCHM.vsd")));
}

TEST_F(SchedulerScreenTest, ClosingTheWindowInARunAsksAtOnce) {
    Book("nightly");
    ui.Choose("mnu_RunSchedules");
    ui.clock.now = ToDateTime({2026, 12, 1, 6, 0, 1});
    for (int tick = 1; tick <= 16; ++tick) Tick();
    ui.host.everyTurn = true;
    ui.host.answers = {Answer::No, Answer::Yes};
    int asked = 0;
    ui.host.eachTurn = [&] {
        if (!ui.frame->Context().commands.Busy() || asked == 2) return;
        ++asked;
        ui.frame->close();
        EXPECT_EQ(ui.host.messages.size(), static_cast<std::size_t>(asked));
        EXPECT_TRUE(ui.frame->isVisible());
    };
    Tick();
    ui.host.eachTurn = [] {};
    UiApp::Settle();
    constexpr const char* kQuestion = "Schedules are running. Exit Anyway?";
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre(kQuestion, kQuestion, HasSubstr("run of nightly was canceled")));
    EXPECT_FALSE(ui.frame->isVisible());
    ui.SetGoodSettings();
    EXPECT_FALSE(FindJob(Store(), 1)->processed) << "the row stays due";
}

TEST_F(SchedulerScreenTest, WhileALongCommandRunsNothingIsStored) {
    Book("a");
    Press("cmdPopulate");
    ui.frame->Context().commands.Run({"Test", Screen::Treeview}, [&] {
        EXPECT_FALSE(Control<QWidget>("cmdAdd").isEnabled());
        EXPECT_FALSE(Control<QWidget>("cmddelete").isEnabled());
        Choose("tvwKestrimoor", "&Delete");
        Press("cmdPopulate");
    });
    EXPECT_TRUE(Control<QWidget>("cmdAdd").isEnabled());
    EXPECT_THAT(Names("tvwKestrimoor"), ElementsAre("a"));
}

}  // namespace
}  // namespace norvelis::ui
