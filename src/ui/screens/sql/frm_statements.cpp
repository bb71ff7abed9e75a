#include "ui/screens/sql/frm_statements.h"

#include <QItemSelectionModel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "ui/controls/flx_grid.h"
#include "ui/controls/split.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

frmStatements::frmStatements(const ScreenContext& context)
    : Form(context, "frmStatements", "STATEMENTS OF THE CONVERSION", kLargeForm),
      FlxGrid_(new FlxGrid("FlxGrid", "RECORD|STATEMENT", context.app.host, this)),
      txtStatement_(new QPlainTextEdit(this)),
      lblEnding_(MakeLabel(this, "lblEnding", {})) {
    FlxGrid_->setAccessibleName("Statements");
    txtStatement_->setObjectName("txtStatement");
    txtStatement_->setAccessibleName("Statement");
    txtStatement_->setReadOnly(true);
    txtStatement_->setTabChangesFocus(true);
    lblEnding_->setWordWrap(true);
    connect(FlxGrid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                txtStatement_->setPlainText(current.siblingAtColumn(1).data().toString());
            });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 12, 16, 16);
    column->addWidget(Split(Qt::Vertical, FlxGrid_, txtStatement_, 320, 170), 1);
    column->addWidget(lblEnding_);
}

void frmStatements::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

void frmStatements::Show(const std::vector<std::array<std::string, 2>>& statements,
                         const std::string& ending) {
    FlxGrid_->SetRows(statements);
    FlxGrid_->setCurrentIndex(FlxGrid_->model()->index(0, 0));
    lblEnding_->setText(QString::fromStdString(ending));
    lblEnding_->setVisible(!ending.empty());
}

}  // namespace norvelis::ui
