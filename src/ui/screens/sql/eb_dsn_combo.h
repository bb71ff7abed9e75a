#pragma once

#include <QWidget>
#include <string>
#include <string_view>

class QComboBox;

namespace norvelis {
struct AppState;
}

namespace norvelis::ui {

/// A drop-down control that lists the ODBC data sources of the machine, or those of one driver alone.
class EBDSNCombo : public QWidget {
    Q_OBJECT

  public:
    EBDSNCombo(const QString& name, AppState& app, QWidget* parent);

    /// The selected data source. A name that the list does not hold changes nothing; an empty one clears the
    /// selection.
    std::string DSN() const;
    void SetDSN(const std::string& name);

    /// The driver's description; empty lists every source. Setting it reads the sources again.
    const std::string& DriverFilter() const { return driverFilter_; }
    void SetDriverFilter(std::string_view filter);

    /// Reads the sources again; the selection stays while it is among them. What the driver manager has to
    /// say about it is shown in a box.
    void Refresh();

    std::size_t Count() const;
    std::size_t Hidden() const { return hidden_; }  ///< Sources that the filter left out.

    /// Both properties as the keys `DSN` and `DriverFilter` of a section of Local.Ini.
    void ReadProperties(const std::string& section);
    void WriteProperties(const std::string& section) const;

  private:
    AppState& app_;
    QComboBox* cboDSN_;
    std::string driverFilter_;
    std::size_t hidden_ = 0;
};

}  // namespace norvelis::ui
