#include "ui/screens/sql/frm_kept_tables.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <vector>

#include "base/paths.h"
#include "sqlconv/report/conversion_report.h"
#include "ui/controls/button_row.h"
#include "ui/controls/flx_grid.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/split.h"
#include "ui/forms/record_lists.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

frmKeptTables::frmKeptTables(const ScreenContext& context, const tables::KeptTables& kept)
    : Form(context, "frmKeptTables", "TABLES OF THE CONVERSION", kLargeForm),
      kept_(kept),
      script_(tables::ScriptText(kept.script, kept.dialect)),
      lblTotals_(MakeLabel(this, "lblTotals", {})),
      lblWhere_(MakeLabel(this, "lblWhere", {})),
      FlxGrid_(new FlxGrid("FlxGrid", "LOOK|WHAT|RECORD|NAME|BECAME|TYPE|WHY", context.app.host, this)),
      txtScript_(new QPlainTextEdit(this)) {
    FlxGrid_->setAccessibleName("What becomes of the schema");
    FlxGrid_->AllowSorting();
    txtScript_->setObjectName("txtScript");
    txtScript_->setAccessibleName("Script");
    txtScript_->setReadOnly(true);
    txtScript_->setTabChangesFocus(true);
    txtScript_->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtScript_->setPlainText(QString::fromStdString(script_));
    lblTotals_->setWordWrap(true);
    lblWhere_->setWordWrap(true);
    lblWhere_->hide();

    auto* buttons = new ButtonRow(this);
    buttons->Add("cmdSaveScript", "SAVE SCRIPT", "Write the script to a file",
                 [this] { cmdSaveScript_Click(); });
    buttons->Add("cmdSaveReport", "SAVE REPORT", "Write what becomes of everything to a page",
                 [this] { cmdSaveReport_Click(); });
    cmdCreate_ = buttons->Add("cmdCreate", "CREATE THE TABLES", "Execute the script on the server",
                              [this] { cmdCreate_Click(); });
    cmdCreate_->hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 12, 16, 16);
    column->addWidget(lblTotals_);
    column->addWidget(Split(Qt::Vertical, FlxGrid_, txtScript_, 260, 230), 1);
    column->addWidget(lblWhere_);
    column->addLayout(buttons);
    ShowReport();
}

void frmKeptTables::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

/// What a person should look at comes first.
void frmKeptTables::ShowReport() {
    QString totals = "Schema " + QString::fromStdString(kept_.model.schema) + " for " +
                     QString::fromStdString(std::string(kept_.dialect.Title())) + ": ";
    QString separator;
    for (const auto& words : tables::TotalsInWords(tables::TotalsOf(kept_.model))) {
        totals += separator + QString::fromStdString(words);
        separator = "; ";
    }
    lblTotals_->setText(totals + ".");
    std::vector<std::array<std::string, 7>> rows;
    for (const auto& outcome : kept_.model.outcomes)
        rows.push_back({outcome.lookAt ? "look" : "", std::string(tables::SubjectName(outcome.subject)),
                        outcome.record, outcome.name, outcome.became.empty() ? "nothing" : outcome.became,
                        outcome.became.empty() ? "" : kept_.dialect.TypeText(outcome.type), outcome.why});
    std::stable_partition(rows.begin(), rows.end(), [](const auto& row) { return !row.front().empty(); });
    FlxGrid_->SetRows(rows);
}

void frmKeptTables::OfferCreation(const std::string& where) {
    lblWhere_->setText(QString::fromStdString(where));
    lblWhere_->show();
    cmdCreate_->show();
}

void frmKeptTables::Save(const char* what, const char* filter, const std::string& file,
                         const std::string& text) {
    const auto path = App().host.SaveFileDialog(what, filter, file);
    if (path) ReportFailure(App(), what, [&] { WriteFile(*path, text); });
}

void frmKeptTables::cmdSaveScript_Click() {
    Save("Save script", "SQL scripts (*.sql)", kept_.model.schema + ".sql", script_);
}

void frmKeptTables::cmdSaveReport_Click() {
    Save("Save report", "Pages (*.html)", kept_.model.schema + ".html",
         tables::ReportHtml(kept_.model, kept_.dialect));
}

void frmKeptTables::cmdCreate_Click() {
    wanted_ = true;
    close();
}

}  // namespace norvelis::ui
