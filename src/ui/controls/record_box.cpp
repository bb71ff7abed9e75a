#include "ui/controls/record_box.h"

#include <QGridLayout>
#include <QPainter>

#include "ui/controls/elided_label.h"

namespace norvelis::ui {

namespace {

constexpr int kColumns = 4;

}  // namespace

RecordBox::RecordBox(QPalette::ColorRole face, QPalette::ColorRole text, QWidget* parent) : QWidget(parent) {
    setBackgroundRole(face);
    setForegroundRole(text);
    lblRecordname_ = AddLabel("lblRecordname", "Record");
    lbltableid_ = AddLabel("lbltableid", "Record id");
    lbldn_ = AddLabel("lbldn", "Record type");
    lblreclen_ = AddLabel("lblreclen", "Length");
    lblrecmode_ = AddLabel("lblrecmode", "Location mode");
    lblreckey_ = AddLabel("lblreckey", "Key");
    lblDN2_ = AddLabel("lblDN2", "Duplicates");
    lblareaname_ = AddLabel("lblareaname", "Area");
    QFont bold;
    bold.setBold(true);
    lblRecordname_->setFont(bold);

    auto* box = new QGridLayout(this);
    box->setContentsMargins(1, 1, 1, 1);
    box->setSpacing(1);
    box->addWidget(lblRecordname_, 0, 0, 1, kColumns);
    int column = 0;
    for (QLabel* label : {lbltableid_, lbldn_, lblreclen_, lblrecmode_}) box->addWidget(label, 1, column++);
    box->addWidget(lblreckey_, 2, 0, 1, kColumns - 1);
    box->addWidget(lblDN2_, 2, kColumns - 1);
    box->addWidget(lblareaname_, 3, 0, 1, kColumns);
}

QLabel* RecordBox::AddLabel(const QString& name, const QString& spoken) {
    auto* label = new ElidedLabel(name, {}, this);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    label->setContentsMargins(8, 3, 8, 3);
    label->setForegroundRole(foregroundRole());
    label->setAccessibleName(spoken);
    return label;
}

void RecordBox::Fill(const RecordLabels& labels) {
    lblRecordname_->setText(QString::fromStdString(labels.lblRecordname));
    lblareaname_->setText(QString::fromStdString(labels.lblareaname));
    lbltableid_->setText(QString::fromStdString(labels.lbltableid));
    lblrecmode_->setText(QString::fromStdString(labels.lblrecmode));
    lblreckey_->setText(QString::fromStdString(labels.lblreckey));
    lblreclen_->setText(QString::fromStdString(labels.lblreclen));
    lbldn_->setText(QString::fromStdString(labels.lbldn));
    lblDN2_->setText(QString::fromStdString(labels.lblDN2));
    setAccessibleName(lblRecordname_->text());
}

// The lines of the box are the gaps between its cells.
void RecordBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Dark));
    for (const QLabel* label : findChildren<QLabel*>())
        painter.fillRect(label->geometry(), palette().color(backgroundRole()));
}

}  // namespace norvelis::ui
