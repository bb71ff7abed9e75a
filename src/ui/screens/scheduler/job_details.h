#pragma once

#include <QButtonGroup>
#include <QGroupBox>
#include <optional>

#include "scheduler/jobs.h"

class QGridLayout;
class QLabel;
class QLineEdit;

namespace norvelis::ui {

class SkinButton;

/// The fields of one job: of a row of the store, which a person may change, or of one that is to be booked.
class JobDetails : public QGroupBox {
    Q_OBJECT

  public:
    explicit JobDetails(QWidget* parent);

    void Clear();  ///< For a job that is to be booked.
    void ShowRow(const Job& job);
    void CopyFrom(const Job& job);  ///< As a job that is to be booked.

    /// The row on show as the store has it; nothing for a job that is to be booked.
    const std::optional<Job>& Row() const { return row_; }
    Job Entered() const;  ///< As the fields are now, but for the date.
    std::string NextDate() const;
    void SetNextDate(const std::string& date);
    void SetReport(const std::string& path);
    void FocusOn(JobField field);

  signals:
    void ReportWanted();      ///< Another report is to be picked.
    void ShowReportWanted();  ///< The report is to be seen.
    void ShowDrawingWanted();
    void ReportChanged();

  private:
    void FillGrid(QGridLayout& grid);
    SkinButton* MakeButton(const QString& name, const QString& caption, const QString& toolTip,
                           void (JobDetails::*wanted)());
    void Fill(const Job& job);

    std::optional<Job> row_;
    QLabel *lblElement_, *lblFax_;
    QLineEdit *txtName_, *txtAddress_, *txtTel_, *txtEmail_, *txtNextSchedule2_, *FilenameRec_, *VisioFile_;
    QButtonGroup ProcessedOption_;
};

}  // namespace norvelis::ui
