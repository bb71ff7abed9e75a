#pragma once

#include <QTimer>

#include "commands/schedule_engine.h"
#include "ui/forms/form.h"

class QAbstractButton;
class QAction;
class QBoxLayout;
class QComboBox;
class QLineEdit;
class QTabWidget;

namespace norvelis::ui {

class DocumentViews;
class FutureDates;
class JobDetails;
class JobLists;
class SkinButton;
class ouSchedule;

/// The scheduler: which jobs are booked, what a schedule comes out as, and the fields of one job.
class frm_Scheduler : public Form {
    Q_OBJECT

  public:
    explicit frm_Scheduler(const ScreenContext& context);

    void Load() override;
    /// Asks when schedules are running. A run is canceled first; the screen closes when that has ended.
    bool QueryUnload() override;
    bool ClosesLater() const override { return closesAfterTick_; }

  protected:
    void LoadINISettings() override;
    void SaveINISettings() override;

  private:
    commands::EngineScreen EngineScreen();
    QWidget* ScheduleMenu();
    QBoxLayout* RunRows();  ///< What the engine does, and CANCEL.
    void ShowEngineState();
    void Timer3_Timer();

    QWidget* MakeClock();
    QWidget* MakeLists();
    QWidget* EditorPage();
    QBoxLayout* CalculateRow();
    QBoxLayout* CommandRow();
    void ConnectDetails();

    void FillTrees();
    void ClickNode(const std::string& key);
    void SayGone(std::int64_t id);

    void Calculate();
    void CreateOrUpdate();
    void DeleteShown();  ///< Or those that are marked, when there are several.
    void DeleteMarked();
    void Delete(const std::vector<std::int64_t>& ids);
    void RunAgain();
    void CopyIntoEditor();
    void ShowCreate();  ///< The fields are those of a job that is to be booked.
    void ShowUpdate(const Job& job);
    /// By a command: the trees are read again, and the row on show when it is one of these.
    void JobsChanged(const std::vector<std::int64_t>& ids);

    void ViewReport();
    void ViewSchema();
    std::string ChooseDrawing(const std::vector<std::string>& drawings);  ///< Empty for none.
    void ViewVisioFile();
    void OpenDefinition();
    void SaveDefinition();
    void Timer2_Timer();

    /// A step that a failure may end; the screen stays.
    void Guarded(const char* procedure, const std::function<void()>& step);

    commands::ScheduleEngine engine_;
    QAction *mnu_RunSchedules_, *mnu_stopSchedules_;
    QLabel* lblRun_;
    QString running_;      ///< The run in progress, in words.
    QTimer Timer3_{this};  ///< The ticks of the engine.
    bool inTick_ = false, closesAfterTick_ = false;
    JobLists* lists_;
    QTabWidget* SSTab1_;
    ouSchedule* ouSchedule_;
    QLineEdit *txtDateTime_, *txtNextSchedule_;
    QComboBox* Combo1_;
    JobDetails* details_;
    FutureDates* dates_;
    QAbstractButton* alsoNext_;
    SkinButton *cmdAdd_, *cmdView_;
    DocumentViews* documents_;
    QLabel *lblCurrentTime_, *lblCurrentDate_;
    QTimer Timer2_{this};
};

}  // namespace norvelis::ui
