#pragma once

#include <QTimer>
#include <memory>
#include <optional>
#include <stop_token>

#include "ui/forms/form.h"
#include "viewer/report_lines.h"

class QBoxLayout;
class QLineEdit;
class QListWidget;

namespace norvelis::ui {

class ReportView;

/// The schema report as it is, whatever its size: its lines, the records found in it, a search. The lines
/// near the top are there at once, the others as the report is read on between the events.
class ViewIDMSReport : public Form {
    Q_OBJECT

  public:
    explicit ViewIDMSReport(const ScreenContext& context);
    ~ViewIDMSReport() override;

    void Take(const ScreenRequest& request) override;  ///< ShowReport.

  protected:
    void SaveINISettings() override;

  private:
    QBoxLayout* SearchRow();
    QWidget* RecordsAndLines();
    void MakeMenu();

    void Open(const std::string& path);
    void Close();
    void ReadOn();
    void ShowWanted();
    void ShowRecord();
    void ShowField(std::uint64_t section);
    void ShowSet();
    bool ShowLine(std::uint64_t line, bool marked);  ///< False when the report ends before it.
    void ShowSection(int row);
    void Compare();
    void ShowCount();
    void Say(const QString& words);

    void MarkFound();
    void Find(bool forward);
    void GoToLine();
    void Copy();
    void PrintMarked();

    std::shared_ptr<viewer::ReportLines> report_;
    std::string path_;
    /// What is shown as soon as it is known; empty for none, a field is in the record.
    std::string wantedRecord_, wantedField_, wantedSet_;
    std::optional<std::uint64_t> wantedLine_;
    std::stop_source search_;
    bool searching_ = false, hasGrown_ = false;

    QLabel *lblLocation_, *lblStatus_;
    QListWidget* lstRecords_;
    ReportView* RichTextBox1_;
    QLineEdit *txtFind_, *txtLine_;
    QTimer reading_;
};

}  // namespace norvelis::ui
