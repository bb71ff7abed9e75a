#include "ui/screens/browse/frm_tooltip2.h"

#include <QVBoxLayout>

namespace norvelis::ui {

frmToolTip2::frmToolTip2(QWidget* owner) : TipWindow("frmToolTip2", owner) {
    lblRecordname_ = AddHeading("lblRecordname", "Schema");
    lblSchemaRelease_ = AddLabel("lblSchemaRelease", "Release");
    lblschemaVersion_ = AddLabel("lblschemaVersion", "Version");
    lblschemadate_ = AddLabel("lblschemadate", "Date");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(9, 7, 9, 7);
    column->setSpacing(3);
    for (QLabel* label : {lblRecordname_, lblSchemaRelease_, lblschemaVersion_, lblschemadate_})
        column->addWidget(label);
}

void frmToolTip2::Fill(const SchemaLabels& labels) {
    lblRecordname_->setText(QString::fromStdString(labels.lblRecordname));
    lblSchemaRelease_->setText(QString::fromStdString(labels.lblSchemaRelease));
    lblschemaVersion_->setText(QString::fromStdString(labels.lblschemaVersion));
    lblschemadate_->setText(QString::fromStdString(labels.lblschemadate));
}

}  // namespace norvelis::ui
