#pragma once

#include <string>

#include "sqlconv/table_procedures.h"
#include "ui/forms/form.h"
#include "ui/forms/progress_view.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;

namespace norvelis::ui {

class FlxGrid;
class RowFeed;

/// Named SQL statements with the data source and the login to run them under; one is run on request, and its
/// rows are shown while others still come. Passwords are never shown.
class TableProcedures : public Form, public ProgressView {
    Q_OBJECT

  public:
    explicit TableProcedures(const ScreenContext& context);

    void Load() override;
    ProgressView* Progress() override { return this; }
    void ShowStatus(const QString& text) override;
    void ShowProgress(Bar, const ProgressBar&) override {}

  protected:
    void LoadINISettings() override;

  private:
    QLayout* Fields();
    QLayout* Statement();
    QLayout* Buttons();
    QLineEdit* AddLine(const char* name, const QString& toolTip);

    void List();
    void Tprocs_Click();
    void ShowSource(const std::string& source);  ///< Without a password that it holds.
    void Save_Click();
    void Update_Click();
    void Delete_Click();
    void Execute_Click();

    TableProcedure Typed(const std::string& name) const;
    std::string Selected() const;
    void RunStatement(const TableProcedure& procedure);
    bool ShowRows(RowFeed& feed);
    std::size_t RowCount() const;
    void ReportRows(const QueryEnd& end);

    QComboBox* Tprocs_;
    QLineEdit *txtProcName_, *txtdsnName_, *txtUsername_, *txtPassword_;
    QPlainTextEdit* txtSqlStatement_;
    FlxGrid* FlxGrid_;
    QLabel* lblStatus_;
    std::string source_;     ///< What txtdsnName shows without its passwords.
    bool deleting_ = false;  ///< Choosing in Tprocs does nothing meanwhile.
};

}  // namespace norvelis::ui
