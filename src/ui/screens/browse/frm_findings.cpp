#include "ui/screens/browse/frm_findings.h"

#include <QVBoxLayout>
#include <algorithm>

#include "base/failure.h"
#include "browse/findings_list.h"
#include "ui/controls/button_row.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/flx_grid.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

namespace {

constexpr int kSchemaColumn = 1, kLineColumn = 2;  // Of kFindingsHeading.

}  // namespace

frm_Findings::frm_Findings(const ScreenContext& context)
    : Form(context, "frm_Findings", "WHAT READING THE REPORTS LOST", kLargeForm),
      FlxGrid_(new FlxGrid("FlxGrid", kFindingsHeading, context.app.host, this)),
      lblCount_(MakeLabel(this, "lblCount", {})) {
    FlxGrid_->setAccessibleName("Findings");
    FlxGrid_->AllowSorting();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 12, 16, 16);
    column->addWidget(lblCount_);
    column->addWidget(FlxGrid_, 1);
    auto* buttons = new ButtonRow(this);
    buttons->addStretch();
    SkinButton* show =
        buttons->Add("cmdShow", "SHOW IN REPORT", "Show the line of the marked finding (Return)",
                     [this] { ShowInReport(); });
    column->addLayout(buttons);
    connect(FlxGrid_, &QAbstractItemView::activated, this, [this] { ShowInReport(); });
    ContextMenu menu(FlxGrid_);
    menu.AddLine();
    menu.Add("Sho&w in report\tReturn", show);
    context.commands.DisableWhileBusy(OnKeys(this, Qt::Key_Escape, &QWidget::close));  // Then it cancels.
    OnKeys(this, QKeySequence::Refresh, [this] { Fill(); });
}

void frm_Findings::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

void frm_Findings::Take(const ScreenRequest& request) {
    if (!std::holds_alternative<ShowFindings>(request)) return;
    Fill();
    App().host.OpenScreen(Screen::Findings, false);
    FlxGrid_->setFocus();
}

// What is about the whole report is shown at its top.
void frm_Findings::ShowInReport() {
    const QModelIndex row = FlxGrid_->currentIndex();
    if (!row.isValid()) return;
    const auto cell = [&row](int column) { return row.siblingAtColumn(column).data().toString(); };
    Context().request(ShowReport{.line = std::max(cell(kLineColumn).toULongLong(), 1ULL),
                                 .schema = cell(kSchemaColumn).toStdString()});
}

void frm_Findings::Fill() {
    FindingsList list;
    try {
        list = LoadFindings(*App().gConnection);
    } catch (const RuntimeFailure& failure) {
        lblCount_->setText(failure.what());
        return;
    }
    lblCount_->setText(
        QString("%1 warnings: rows are missing, empty, or hold what belongs to another section. "
                "%2 notes: the dictionary has no place for it.")
            .arg(list.warnings)
            .arg(list.rows.size() - list.warnings));
    FlxGrid_->SetRows(list.rows);
    FlxGrid_->setCurrentIndex(FlxGrid_->model()->index(0, 0));
}

}  // namespace norvelis::ui
