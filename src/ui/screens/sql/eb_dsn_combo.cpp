#include "ui/screens/sql/eb_dsn_combo.h"

#include <QComboBox>
#include <QHBoxLayout>

#include "base/ini.h"
#include "core/log.h"
#include "sqlconv/data_sources.h"

namespace norvelis::ui {

EBDSNCombo::EBDSNCombo(const QString& name, AppState& app, QWidget* parent)
    : QWidget(parent), app_(app), cboDSN_(new QComboBox(this)) {
    setObjectName(name);
    cboDSN_->setObjectName("cboDSN");
    cboDSN_->setAccessibleName("DSN Name");
    cboDSN_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setFocusProxy(cboDSN_);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(cboDSN_);
}

std::string EBDSNCombo::DSN() const {
    return cboDSN_->currentText().toStdString();
}

void EBDSNCombo::SetDSN(const std::string& name) {
    const int found =
        cboDSN_->findText(QString::fromStdString(name), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (name.empty() || found >= 0) cboDSN_->setCurrentIndex(name.empty() ? -1 : found);
}

void EBDSNCombo::SetDriverFilter(std::string_view filter) {
    driverFilter_ = filter;
    Refresh();
}

void EBDSNCombo::Refresh() {
    const std::string selected = DSN();
    cboDSN_->clear();
    hidden_ = 0;
    try {
        const DataSourceList list = DataSources(driverFilter_);
        for (const auto& [name, driver] : list.shown) {
            cboDSN_->addItem(QString::fromStdString(name));
            cboDSN_->setItemData(cboDSN_->count() - 1, QString::fromStdString(driver), Qt::ToolTipRole);
        }
        hidden_ = list.hidden;
        if (list.trouble) app_.host.MessageBox(OdbcErrorText(*list.trouble));
    } catch (const SqlFailure& failure) {
        WriteToErrorLog(app_, "EBDSNCombo", "EBDSNCombo_Refresh", failure.what(),
                        static_cast<int>(failure.Number()));
    }
    cboDSN_->setCurrentIndex(-1);
    SetDSN(selected);
}

std::size_t EBDSNCombo::Count() const {
    return static_cast<std::size_t>(cboDSN_->count());
}

void EBDSNCombo::ReadProperties(const std::string& section) {
    const std::string selected = ReadINIValue(section, "DSN", app_.gLocalIni);
    SetDriverFilter(ReadINIValue(section, "DriverFilter", app_.gLocalIni));
    SetDSN(selected);
}

void EBDSNCombo::WriteProperties(const std::string& section) const {
    WriteINIValue(section, "DSN", DSN(), app_.gLocalIni);
    WriteINIValue(section, "DriverFilter", driverFilter_, app_.gLocalIni);
}

}  // namespace norvelis::ui
