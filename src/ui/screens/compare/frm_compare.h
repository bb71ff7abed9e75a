#pragma once

#include <optional>
#include <vector>

#include "compare/comparison_text.h"
#include "compare/edition.h"
#include "ui/forms/form.h"
#include "ui/forms/progress_view.h"

class QComboBox;

namespace norvelis::ui {

class FlxGrid;

/// What changed between two editions of a schema, each a schema of the dictionary or a report file: as a
/// list, as a page of HTML, as a drawing.
class frm_Compare : public Form, public ProgressView {
    Q_OBJECT

  public:
    explicit frm_Compare(const ScreenContext& context);

    ProgressView* Progress() override { return this; }
    void ShowStatus(const QString& text) override;
    void ShowProgress(Bar, const ProgressBar&) override {}

  protected:
    void LoadINISettings() override;
    void showEvent(QShowEvent*) override;

  private:
    QComboBox* AddChooser(const char* name, const char* spoken);
    QLayout* Choosers();
    QLayout* Buttons();

    void ListEditions();
    void PickReport(QComboBox* chooser);
    void Compare();
    void ShowComparison();
    void ShowRows();
    void SaveAsHtml();
    void DrawDifferences();

    QComboBox *cboFormer_, *cboPresent_, *cboKind_;
    FlxGrid* FlxGrid_;
    QLabel *lblSummary_, *lblStatus_;
    std::optional<compare::ComparedEditions> editions_;  ///< Those on show.
    std::vector<compare::Row> rows_;                     ///< Of all kinds.
};

}  // namespace norvelis::ui
