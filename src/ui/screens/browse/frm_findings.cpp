#include "ui/screens/browse/frm_findings.h"

#include <QVBoxLayout>

#include "base/failure.h"
#include "browse/findings_list.h"
#include "ui/controls/flx_grid.h"
#include "ui/controls/keys.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

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
}

}  // namespace norvelis::ui
