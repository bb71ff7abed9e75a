#include "ui/screens/compare/frm_compare.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "base/failure.h"
#include "base/paths.h"
#include "commands/compare_commands.h"
#include "commands/difference_drawing.h"
#include "compare/comparison_page.h"
#include "core/settings.h"
#include "dictionary/schemas.h"
#include "ui/controls/button_row.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/flx_grid.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/cancel_button.h"
#include "ui/forms/record_lists.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

namespace {

constexpr int kGap = 6, kMargin = 16;
constexpr auto kAllKinds = "All kinds";

std::string Headings() {
    std::string headings;
    for (const std::string_view heading : compare::kRowHeadings) {
        if (!headings.empty()) headings += '|';
        headings += heading;
    }
    return headings;
}

commands::EditionRead ReadChosen(AppState& app, const QComboBox& chooser) {
    const std::string report = chooser.currentData().toString().toStdString();
    if (!report.empty()) return commands::EditionInReport(app, report);
    return commands::EditionInDictionary(app, chooser.currentText().toStdString());
}

void AddReport(QComboBox& chooser, const std::string& path) {
    const QString shown = QString::fromStdString(path);
    if (chooser.findData(shown) < 0) chooser.addItem("Report " + shown, shown);
}

}  // namespace

frm_Compare::frm_Compare(const ScreenContext& context)
    : Form(context, "frm_Compare", "WHAT CHANGED", kLargeForm),
      cboFormer_(AddChooser("cboFormer", "Former edition")),
      cboPresent_(AddChooser("cboPresent", "Present edition")),
      cboKind_(AddChooser("cboKind", "Kinds that are shown")),
      FlxGrid_(new FlxGrid("FlxGrid", Headings(), context.app.host, this)),
      lblSummary_(new ElidedLabel("lblSummary", {}, this)),
      lblStatus_(new ElidedLabel("lblStatus", {}, this)) {
    FlxGrid_->setAccessibleName("Differences");
    FlxGrid_->AllowSorting();
    connect(cboKind_, &QComboBox::currentIndexChanged, this, &frm_Compare::ShowRows);
    auto* status = new QHBoxLayout;
    status->addWidget(lblStatus_, 1);
    AddCancelButton(Context(), *status, this);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, Body().top() + 12, kMargin, 10);
    rows->setSpacing(kGap);
    rows->addLayout(Choosers());
    rows->addLayout(Buttons());
    rows->addWidget(lblSummary_);
    rows->addWidget(FlxGrid_, 1);
    rows->addLayout(status);
    OnKeys(this, Qt::Key_Escape, &QWidget::close);
    OnKeys(this, QKeySequence::Refresh, [this] { ListEditions(); });
}

QComboBox* frm_Compare::AddChooser(const char* name, const char* spoken) {
    auto* chooser = new QComboBox(this);
    chooser->setObjectName(name);
    chooser->setAccessibleName(spoken);
    chooser->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return chooser;
}

QLayout* frm_Compare::Choosers() {
    auto* grid = new QGridLayout;
    grid->setSpacing(kGap);
    const struct {
        const char *label, *words, *button;
        QComboBox* chooser;
    } lines[] = {{"lblFormer", "Former", "cmdFormer", cboFormer_},
                 {"lblPresent", "Present", "cmdPresent", cboPresent_}};
    for (int row = 0; const auto& line : lines) {
        line.chooser->setToolTip("A schema of the dictionary, or a schema report");
        auto* buttons = new ButtonRow(this);
        buttons->Add(line.button, "REPORT FILE...", "Choose a schema report",
                     [this, chooser = line.chooser] { PickReport(chooser); });
        grid->addWidget(MakeLabel(this, line.label, line.words), row, 0);
        grid->addWidget(line.chooser, row, 1);
        grid->addLayout(buttons, row++, 2);
    }
    grid->setColumnStretch(1, 1);
    return grid;
}

QLayout* frm_Compare::Buttons() {
    auto* row = new ButtonRow(this);
    for (SkinButton* button :
         {row->Add("cmdCompare", "COMPARE", "List what changed from the former edition to the present one",
                   [this] { Compare(); }),
          row->Add("cmdDrawDifferences", "DRAW THE DIFFERENCES",
                   "Draw the present edition with all differences marked", [this] { DrawDifferences(); }),
          row->Add("cmdHtml", "SAVE AS HTML...", "Write the whole list as a page for a browser",
                   [this] { SaveAsHtml(); })}) {
        Context().commands.DisableWhileBusy(button);
    }
    row->addStretch(1);
    row->addWidget(MakeLabel(this, "lblKind", "Show"));
    row->addWidget(cboKind_);
    cboKind_->addItem(kAllKinds);
    cboKind_->setMinimumContentsLength(12);
    return row;
}

void frm_Compare::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

void frm_Compare::showEvent(QShowEvent* event) {
    Form::showEvent(event);
    ListEditions();
}

// The usual wish comes first: what would the report of the settings change in the dictionary?
void frm_Compare::ListEditions() {
    const QString former = cboFormer_->currentText(), present = cboPresent_->currentText();
    const std::string report = getreportlocation(App());
    for (QComboBox* chooser : {cboFormer_, cboPresent_}) {
        chooser->clear();
        ReportFailure(App(), "ListEditions", [this, chooser] {
            auto row = dictionary::SchemasOfRecords(*App().gConnection);
            for (; !row.Eof(); row.MoveNext())
                chooser->addItem(QString::fromStdString(row.Text("schemaname")));
        });
        if (FileExists(report)) AddReport(*chooser, report);
    }
    cboPresent_->setCurrentIndex(cboPresent_->count() - 1);
    cboFormer_->setCurrentText(former);
    cboPresent_->setCurrentText(present);
}

void frm_Compare::PickReport(QComboBox* chooser) {
    const auto path = App().host.OpenFileDialog("Schema report", "*.*");
    if (!path || path->empty()) return;
    for (QComboBox* each : {cboFormer_, cboPresent_}) AddReport(*each, *path);
    chooser->setCurrentIndex(chooser->findData(QString::fromStdString(*path)));
}

void frm_Compare::Compare() {
    Context().commands.Run({"Compare", Screen::Compare}, [this] {
        App().host.SetAfterCancel("Nothing was changed.");
        lblStatus_->setText("Comparing...");
        commands::EditionsCompared compared;
        try {
            compared =
                commands::CompareEditions(ReadChosen(App(), *cboFormer_), ReadChosen(App(), *cboPresent_));
        } catch (const RuntimeFailure& failure) {
            compared.refusal = failure.what();
        }
        lblStatus_->clear();
        if (!compared.editions) return App().host.MessageBox(compared.refusal);
        editions_ = std::move(compared.editions);
        ShowComparison();
    });
}

void frm_Compare::ShowComparison() {
    lblSummary_->setText(QString::fromStdString(compare::Summary(editions_->differences)));
    rows_ = compare::WarningRows(*editions_);
    const auto rows = compare::Rows(editions_->differences);
    rows_.insert(rows_.end(), rows.begin(), rows.end());
    QStringList kinds{kAllKinds};
    for (const auto& row : rows_) {
        if (const QString kind = QString::fromStdString(row.front()); !kinds.contains(kind)) kinds << kind;
    }
    const QString shown = cboKind_->currentText();
    const QSignalBlocker onlyOnce(cboKind_);
    cboKind_->clear();
    cboKind_->addItems(kinds);
    cboKind_->setCurrentText(shown);
    ShowRows();
}

void frm_Compare::ShowRows() {
    std::vector<compare::Row> shown = rows_;
    if (cboKind_->currentIndex() > 0)
        std::erase_if(shown, [kind = cboKind_->currentText().toStdString()](const auto& row) {
            return row.front() != kind;
        });
    FlxGrid_->SetRows(shown);
}

void frm_Compare::SaveAsHtml() {
    if (!editions_) return App().host.MessageBox("Nothing has been compared yet.");
    const auto path = App().host.SaveFileDialog("Save as HTML", "HTML page (*.html)", "differences.html");
    if (!path) return;
    if (const auto why = commands::WhyNotWrittenTo(*path, *editions_)) return App().host.MessageBox(*why);
    try {
        WriteFile(*path, compare::HtmlPage(*editions_));
        lblStatus_->setText("Saved as " + QString::fromStdString(*path));
    } catch (const RuntimeFailure& failure) {
        App().host.MessageBox(failure.what());
    }
}

void frm_Compare::DrawDifferences() {
    if (!editions_) return App().host.MessageBox("Nothing has been compared yet.");
    std::string saved;
    Context().commands.Run({"Draw the differences", Screen::Compare}, [&] {
        const clsHourglass hourglass(App().host);
        lblStatus_->setText("Drawing...");
        commands::DrawnDifferences result;
        try {
            result = commands::DrawDifferences(App(), Context().engine, *editions_, {});
        } catch (const RuntimeFailure& failure) {
            result.words = {failure.what()};
        }
        lblStatus_->clear();
        for (const std::string& words : result.words) App().host.MessageBox(words);
        if (result.drawn.result == DrawResult::Saved) saved = result.drawn.file;
    });
    if (saved.empty()) return;
    lblStatus_->setText("File saved as: " + QString::fromStdString(saved));
    Context().request(ShowDrawing{saved});
}

void frm_Compare::ShowStatus(const QString& text) {
    if (!text.isEmpty()) lblStatus_->setText(text);
}

}  // namespace norvelis::ui
