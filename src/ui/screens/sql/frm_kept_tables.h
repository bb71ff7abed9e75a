#pragma once

#include <string>

#include "sqlconv/kept_tables.h"
#include "ui/forms/form.h"

class QPlainTextEdit;

namespace norvelis::ui {

class FlxGrid;
class SkinButton;

/// Tables with types, keys and relations before they are created: what becomes of each record, field, set and
/// index, and the script. Both can be saved.
class frmKeptTables : public Form {
    Q_OBJECT

  public:
    /// `kept` must outlive the window.
    frmKeptTables(const ScreenContext& context, const tables::KeptTables& kept);

    /// Lets the person create the tables; `where` says in words what they go into.
    void OfferCreation(const std::string& where);
    /// The person has asked for it; the window is closed then.
    bool Wanted() const { return wanted_; }

  protected:
    void LoadINISettings() override;

  private:
    void ShowReport();
    void Save(const char* what, const char* filter, const std::string& file, const std::string& text);
    void cmdSaveScript_Click();
    void cmdSaveReport_Click();
    void cmdCreate_Click();

    const tables::KeptTables& kept_;
    const std::string script_;
    QLabel *lblTotals_, *lblWhere_;
    FlxGrid* FlxGrid_;
    QPlainTextEdit* txtScript_;
    SkinButton* cmdCreate_;
    bool wanted_ = false;
};

}  // namespace norvelis::ui
