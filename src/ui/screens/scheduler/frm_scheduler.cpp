#include "ui/screens/scheduler/frm_scheduler.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "base/failure.h"
#include "base/ini.h"
#include "base/paths.h"
#include "base/text.h"
#include "commands/schedule_commands.h"
#include "core/log.h"
#include "scheduler/job_tree.h"
#include "scheduler/next_time.h"
#include "ui/controls/button_row.h"
#include "ui/controls/keys.h"
#include "ui/controls/worded_mark.h"
#include "ui/forms/cancel_button.h"
#include "ui/screens/scheduler/document_views.h"
#include "ui/screens/scheduler/future_dates.h"
#include "ui/screens/scheduler/job_details.h"
#include "ui/screens/scheduler/job_lists.h"
#include "ui/screens/scheduler/ou_schedule.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

namespace {

constexpr int kEditorTab = 0, kDocumentsTab = 1;
constexpr int kMostOffered = 9, kFirstOffered = 3;  ///< Of the counts in Combo1.
constexpr auto kCreate = "Create", kUpdate = "Update";
constexpr auto kSection = "frm_Scheduler", kAlsoNext = "AlsoBookNextDate";

QLineEdit* MakeDate(const char* name, const char* spoken, QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setAccessibleName(spoken);
    return edit;
}

}  // namespace

frm_Scheduler::frm_Scheduler(const ScreenContext& context)
    : Form(context, "frm_Scheduler", "BATCH SCHEDULER", kLargeForm),
      engine_(context.app, context.engine, EngineScreen()) {
    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(14, Body().top() + 10, 14, 14);
    columns->setSpacing(10);
    auto* left = new QVBoxLayout;
    left->addWidget(ScheduleMenu());
    left->addWidget(MakeLists(), 1);
    left->addLayout(RunRows());
    columns->addLayout(left, 2);
    SSTab1_ = new QTabWidget(this);
    SSTab1_->setObjectName("SSTab1");
    SSTab1_->setCornerWidget(MakeClock());
    documents_ = new DocumentViews(context, SSTab1_);
    SSTab1_->addTab(EditorPage(), "Schedule");
    SSTab1_->addTab(documents_, "Report, Logs, Drawing");
    columns->addWidget(SSTab1_, 5);
    ConnectDetails();
    OnKeys(this, QKeySequence::Refresh, [this] { FillTrees(); });
    Timer3_.setObjectName("Timer3");
    connect(&Timer3_, &QTimer::timeout, this, &frm_Scheduler::Timer3_Timer);
    ShowEngineState();
    Timer2_.setObjectName("Timer2");
    connect(&Timer2_, &QTimer::timeout, this, &frm_Scheduler::Timer2_Timer);
    constexpr int kSecond = 1000;
    Timer2_.start(kSecond);
}

commands::EngineScreen frm_Scheduler::EngineScreen() {
    return {[this](const std::string& name, const std::function<void()>& work) {
                running_ = QString::fromStdString(name);
                ShowEngineState();
                Context().commands.Run({name, Screen::Scheduler}, work);
                running_.clear();
                ShowEngineState();
            },
            [this] { return Context().commands.Busy(); }, [this] { FillTrees(); },
            [this] {
                ShowEngineState();
                engine_.IsStarted() ? Timer3_.start(TickMachine::kTickMilliseconds) : Timer3_.stop();
            },
            [this](const std::string& words) { Context().notify(QString::fromStdString(words)); }};
}

QWidget* frm_Scheduler::ScheduleMenu() {
    auto* bar = new QMenuBar(this);
    QMenu* menu = bar->addMenu("S&chedules");
    const auto add = [&](const char* name, const char* caption, void (commands::ScheduleEngine::*command)()) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, [this, command] { (engine_.*command)(); });
        return action;
    };
    mnu_RunSchedules_ = add("mnu_RunSchedules", "Start Schedules", &commands::ScheduleEngine::Start);
    mnu_stopSchedules_ = add("mnu_stopSchedules", "Stop Schedules", &commands::ScheduleEngine::Stop);
    return bar;
}

QBoxLayout* frm_Scheduler::RunRows() {
    lblRun_ = MakeLabel(this, "lblRun", {});
    lblRun_->setWordWrap(true);
    auto* rows = new QVBoxLayout;
    rows->addWidget(lblRun_);
    auto* button = new QHBoxLayout;
    AddCancelButton(Context(), *button, this);
    rows->addLayout(button);
    return rows;
}

void frm_Scheduler::ShowEngineState() {
    const bool started = engine_.IsStarted();
    mnu_RunSchedules_->setEnabled(!started);
    mnu_stopSchedules_->setEnabled(started);
    const char* const state = started ? "Schedules are started" : "Schedules are stopped";
    lblRun_->setText(running_.isEmpty() ? state : running_ + " is in progress");
}

// A run gives the event loop turns, in which the screen may be told to close, and goes on with the engine
// then.
void frm_Scheduler::Timer3_Timer() {
    if (inTick_) return;
    inTick_ = true;
    engine_.Tick();
    inTick_ = false;
    if (closesAfterTick_) close();
}

bool frm_Scheduler::QueryUnload() {
    if (!engine_.AskToClose()) return false;
    if (!inTick_) return true;
    closesAfterTick_ = true;
    Context().commands.Cancel();
    return false;
}

QWidget* frm_Scheduler::MakeClock() {
    auto* clock = new QWidget(SSTab1_);
    lblCurrentDate_ = MakeLabel(clock, "lblCurrentDate", {});
    lblCurrentTime_ = MakeLabel(clock, "lblCurrentTime", {});
    auto* row = new QHBoxLayout(clock);
    row->setContentsMargins(0, 0, 4, 6);
    row->addWidget(lblCurrentDate_);
    row->addWidget(lblCurrentTime_);
    return clock;
}

QWidget* frm_Scheduler::MakeLists() {
    lists_ = new JobLists(App(), Context().commands, this);
    connect(lists_, &JobLists::NodeClicked, this, &frm_Scheduler::ClickNode);
    connect(lists_, &JobLists::RefreshWanted, this, &frm_Scheduler::FillTrees);
    connect(lists_, &JobLists::CopyWanted, this, &frm_Scheduler::CopyIntoEditor);
    connect(lists_, &JobLists::RunAgainWanted, this, &frm_Scheduler::RunAgain);
    connect(lists_, &JobLists::DeleteWanted, this, &frm_Scheduler::DeleteMarked);
    return lists_;
}

QWidget* frm_Scheduler::EditorPage() {
    auto* page = new QWidget(SSTab1_);
    ouSchedule_ = new ouSchedule(App().clock, page);
    details_ = new JobDetails(page);
    dates_ = new FutureDates(App().clock, page);
    auto* booking = new QHBoxLayout;
    booking->setSpacing(8);
    booking->addWidget(details_, 1);
    booking->addWidget(dates_, 1);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(7);
    column->addWidget(ouSchedule_);
    column->addLayout(CalculateRow());
    column->addLayout(booking, 1);
    column->addLayout(CommandRow());
    return page;
}

QBoxLayout* frm_Scheduler::CalculateRow() {
    txtDateTime_ = MakeDate("txtDateTime", "Valid Date/Time", this);
    txtNextSchedule_ = MakeDate("txtNextSchedule", "Next date", this);
    txtNextSchedule_->setReadOnly(true);
    Combo1_ = new QComboBox(this);
    Combo1_->setObjectName("Combo1");
    Combo1_->setAccessibleName("How many dates");
    Combo1_->setEditable(true);
    Combo1_->setCompleter(nullptr);
    Combo1_->setInsertPolicy(QComboBox::NoInsert);
    auto* row = new ButtonRow(this);
    row->addWidget(new QLabel("Valid Date/Time", this));
    row->addWidget(txtDateTime_, 1);
    row->Add("cmdCalculate", "Calculate Next Date==>", "Work out the dates of the schedule above",
             [this] { Calculate(); });
    row->addWidget(txtNextSchedule_, 1);
    row->addWidget(new QLabel("and", this));
    row->addWidget(Combo1_);
    row->addWidget(new QLabel("more", this));
    connect(ouSchedule_, &ouSchedule::Changed, dates_, &FutureDates::DefinitionChanged);
    return row;
}

QBoxLayout* frm_Scheduler::CommandRow() {
    auto* row = new ButtonRow(this);
    cmdAdd_ = row->Add("cmdAdd", kCreate, "Book the dates, or store the fields of the schedule",
                       [this] { CreateOrUpdate(); });
    auto* also = new WordedCheck("chkAlsoNext", "Also book the next date", this);
    alsoNext_ = also->Button();
    row->addLayout(also);
    connect(alsoNext_, &QAbstractButton::toggled, dates_, &FutureDates::SetAlsoNext);
    SkinButton* cmddelete =
        row->Add("cmddelete", "Delete", "Delete the schedule on show, or those that are marked",
                 [this] { DeleteShown(); });
    cmdView_ = row->Add("cmdView", "View Schema", "Show what the run has drawn", [this] { ViewSchema(); });
    row->addStretch();
    row->Add("cmdOpenDefinition", "Open definition...", "Open a schedule that was saved as XML",
             [this] { OpenDefinition(); });
    row->Add("cmdSaveDefinition", "Save definition...", "Save the schedule above as XML",
             [this] { SaveDefinition(); });
    // A running command has the store to itself.
    for (SkinButton* changes : {cmdAdd_, cmddelete}) Context().commands.DisableWhileBusy(changes);
    return row;
}

void frm_Scheduler::ConnectDetails() {
    connect(details_, &JobDetails::ReportChanged, this,
            [this] { dates_->SetReport(details_->Entered().idmsreport); });
    connect(details_, &JobDetails::ReportWanted, this, [this] {
        Guarded("chooseFile", [this] {
            if (const auto report = commands::ChooseReport(App())) details_->SetReport(*report);
        });
    });
    connect(details_, &JobDetails::ShowReportWanted, this, &frm_Scheduler::ViewReport);
    connect(details_, &JobDetails::ShowDrawingWanted, this, &frm_Scheduler::ViewVisioFile);
}

void frm_Scheduler::LoadINISettings() {
    SetTag2(kLargeFormTag);
    const std::string on = ReadINIValue(kSection, kAlsoNext, App().gLocalIni);
    alsoNext_->setChecked(EqualIgnoringCase(on, "True"));
}

void frm_Scheduler::SaveINISettings() {
    WriteINIValue(kSection, kAlsoNext, alsoNext_->isChecked() ? "True" : "False", App().gLocalIni);
}

void frm_Scheduler::Load() {
    Form::Load();
    Timer2_Timer();
    FillTrees();
    for (int count = 0; count <= kMostOffered; ++count) Combo1_->addItem(QString::number(count));
    Combo1_->setCurrentIndex(kFirstOffered);
    connect(Combo1_, &QComboBox::activated, this, &frm_Scheduler::Calculate);
    connect(Combo1_->lineEdit(), &QLineEdit::returnPressed, this, &frm_Scheduler::Calculate);
    txtDateTime_->setText(QString::fromStdString(GeneralDateText(App().clock.Now())));
    Calculate();
}

void frm_Scheduler::FillTrees() {
    const QPointer<frm_Scheduler> here(this);
    const clsHourglass hourglass(App().host);
    if (!here) return;  // Closed in a turn of the event loop.
    Guarded("cmdPopulate", [this] {
        lists_->Fill(details_->Row() ? std::optional(details_->Row()->scheduleid) : std::nullopt);
    });
}

void frm_Scheduler::ClickNode(const std::string& key) {
    Guarded("NodeClick", [&] {
        const auto id = ScheduleIdIn(key);
        if (!id) return;
        if (const auto job = FindJob(*App().gConnection, *id)) {
            ShowUpdate(*job);
            return SSTab1_->setCurrentIndex(kEditorTab);
        }
        SayGone(*id);
    });
}

void frm_Scheduler::SayGone(std::int64_t id) {
    App().host.MessageBox("There is no schedule id:" + std::to_string(id) + " any more.");
    FillTrees();
}

void frm_Scheduler::ShowCreate() {
    cmdAdd_->setText(kCreate);
    cmdView_->setEnabled(false);
}

void frm_Scheduler::ShowUpdate(const Job& job) {
    details_->ShowRow(job);
    cmdAdd_->setText(kUpdate);
    cmdView_->setEnabled(job.processed);
}

void frm_Scheduler::JobsChanged(const std::vector<std::int64_t>& ids) {
    FillTrees();
    if (!details_->Row()) return;
    if (std::find(ids.begin(), ids.end(), details_->Row()->scheduleid) == ids.end()) return;
    if (const auto job = FindJob(*App().gConnection, details_->Row()->scheduleid)) return ShowUpdate(*job);
    details_->Clear();
    ShowCreate();
}

void frm_Scheduler::Calculate() {
    Guarded("cmdCalculate", [this] {
        details_->Clear();
        ShowCreate();
        const std::string T = txtDateTime_->text().toStdString();
        if (!ParseDateTime(T)) return;
        const XmlNode element = ouSchedule_->ScheduleXML_Save();
        const int count = CountOfDates(Combo1_->currentText().toStdString());
        const auto runs = norvelis::Calculate(element, T, count, App().clock.Now());
        txtNextSchedule_->setText(QString::fromStdString(runs->txtNextSchedule));
        details_->SetNextDate(runs->txtNextSchedule);
        dates_->Show(element, *runs);
    });
}

void frm_Scheduler::CreateOrUpdate() {
    const Job job = details_->Entered();
    if (const auto missing = MissingInput(job, txtNextSchedule_->text().toStdString())) {
        App().host.MessageBox(missing->words);
        return details_->FocusOn(missing->field);
    }
    Guarded("cmdAdd", [&] {
        dates_->FillWords();  // Time has passed, and the report may have gone.
        const bool changed = details_->Row() ? commands::UpdateSchedule(App(), job, details_->NextDate())
                                             : commands::CreateSchedules(App(), job, dates_->DatesToBook());
        if (changed) JobsChanged({job.scheduleid});
    });
}

void frm_Scheduler::DeleteShown() {
    Guarded("cmddelete", [this] {
        const auto marked = lists_->MarkedIds();
        if (marked.size() > 1) return Delete(marked);
        if (details_->Row()) return Delete({details_->Row()->scheduleid});
        App().host.MessageBox("Please pick the schedule to delete");
    });
}

void frm_Scheduler::DeleteMarked() {
    Guarded("cmddelete", [this] { Delete(lists_->MarkedIds()); });
}

void frm_Scheduler::Delete(const std::vector<std::int64_t>& ids) {
    if (!ids.empty() && commands::DeleteSchedules(App(), ids)) JobsChanged(ids);
}

void frm_Scheduler::RunAgain() {
    Guarded("RunAgain", [this] {
        const auto ids = lists_->MarkedIds();
        if (!ids.empty() && commands::RunSchedulesAgain(App(), ids)) JobsChanged(ids);
    });
}

void frm_Scheduler::CopyIntoEditor() {
    Guarded("CopyIntoEditor", [this] {
        const auto ids = lists_->MarkedIds();
        if (ids.empty()) return;
        const auto job = FindJob(*App().gConnection, ids.front());
        if (!job) return SayGone(ids.front());
        details_->CopyFrom(*job);
        details_->SetNextDate(txtNextSchedule_->text().toStdString());
        ShowCreate();
    });
}

void frm_Scheduler::ViewReport() {
    if (documents_->ShowReport(details_->Entered().idmsreport)) SSTab1_->setCurrentIndex(kDocumentsTab);
}

void frm_Scheduler::ViewSchema() {
    Guarded("cmdView", [this] {
        if (!details_->Row()) return;
        const auto drawings = commands::DrawingsOfJob(App(), details_->Row()->name);
        if (drawings.empty())
            return App().host.MessageBox(commands::WhereTheDrawingIs(App(), *details_->Row()));
        const auto drawing = drawings.size() == 1 ? drawings.front() : ChooseDrawing(drawings);
        if (!drawing.empty()) Context().request(ShowDrawing{drawing});
    });
}

std::string frm_Scheduler::ChooseDrawing(const std::vector<std::string>& drawings) {
    QMenu choice(this);
    for (const std::string& drawing : drawings) {
        const QString file = QString::fromStdString(drawing);
        choice.addAction(QFileInfo(file).fileName())->setData(file);
    }
    const QAction* chosen = choice.exec(cmdView_->mapToGlobal(cmdView_->rect().bottomLeft()));
    return chosen ? chosen->data().toString().toStdString() : std::string();
}

void frm_Scheduler::ViewVisioFile() {
    Job job = details_->Row().value_or(details_->Entered());
    job.visiofile = details_->Entered().visiofile;
    const std::string file(Trim(*job.visiofile));
    if (!FileExists(file)) return App().host.MessageBox(commands::WhereTheDrawingIs(App(), job));
    documents_->ShowDrawing(file);
    SSTab1_->setCurrentIndex(kDocumentsTab);
}

void frm_Scheduler::OpenDefinition() {
    Guarded("OpenDefinition", [this] {
        if (const auto element = commands::OpenDefinition(App())) ouSchedule_->ScheduleXML_Open(*element);
    });
}

void frm_Scheduler::SaveDefinition() {
    Guarded("SaveDefinition", [this] { commands::SaveDefinition(App(), ouSchedule_->ScheduleXML_Save()); });
}

void frm_Scheduler::Timer2_Timer() {
    const DateTime now = App().clock.Now(), today = DateOnly(now);
    lblCurrentTime_->setText(QString::fromStdString(GeneralDateText(now - today)));
    lblCurrentDate_->setText(QString::fromStdString(GeneralDateText(today)));
}

void frm_Scheduler::Guarded(const char* procedure, const std::function<void()>& step) {
    try {
        step();
    } catch (const RuntimeFailure& failure) {
        if (failure.Number() == FailureNumber::Overflow) return App().host.MessageBox(failure.what());
        WriteToErrorLog(App(), "frm_Scheduler", procedure, failure.what(),
                        static_cast<int>(failure.Number()));
    }
}

}  // namespace norvelis::ui
