#pragma once

#include <QWidget>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/app_state.h"
#include "scheduler/job_search.h"

class QBoxLayout;
class QLineEdit;

namespace norvelis::ui {

class JobTreeView;
class LongCommands;
class SkinButton;

/// Both trees of the scheduler, of the jobs that have not run and of those that have, and their search.
class JobLists : public QWidget {
    Q_OBJECT

  public:
    JobLists(AppState& app, LongCommands& commands, QWidget* parent);

    /// Reads all jobs from the store, whose failure goes through and leaves the trees as they were. The job
    /// of that id is selected again.
    void Fill(std::optional<std::int64_t> selected);

    /// Of the marked jobs, which are in one of the trees. RuntimeFailure 6 as ScheduleIdIn.
    std::vector<std::int64_t> MarkedIds() const;

  signals:
    void NodeClicked(const std::string& key);
    void RefreshWanted();
    // What is to become of the marked jobs.
    void CopyWanted();
    void RunAgainWanted();
    void DeleteWanted();

  private:
    JobTreeView* MakeTree(const char* name, const char* heading, QBoxLayout& column);
    QBoxLayout* SearchRow();
    void AddMenu(JobTreeView& tree);
    void Search();
    void ShowSearchCaption();

    AppState& app_;
    LongCommands& commands_;
    JobTreeView *tvwKestrimoor_, *tvwKestrimoor1_;
    QLineEdit* Text1_;
    SkinButton* cmdSearch_;
    JobSearch search_;
};

}  // namespace norvelis::ui
