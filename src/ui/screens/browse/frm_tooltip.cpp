#include "ui/screens/browse/frm_tooltip.h"

#include <QVBoxLayout>

#include "ui/controls/record_box.h"

namespace norvelis::ui {

frmToolTip::frmToolTip(QWidget* owner)
    : TipWindow("frmToolTip", owner),
      box_(new RecordBox(QPalette::ToolTipBase, QPalette::ToolTipText, this)) {
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(box_);
}

void frmToolTip::Fill(const RecordLabels& labels) {
    box_->Fill(labels);
}

}  // namespace norvelis::ui
