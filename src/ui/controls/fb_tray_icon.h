#pragma once

#include <QIcon>
#include <QObject>
#include <QSystemTrayIcon>

namespace norvelis::ui {

/// The program's icon in the system tray, where the platform has one; otherwise nothing is shown.
class fbTrayIcon : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString TrayIconTip READ TrayIconTip WRITE SetTrayIconTip)

  public:
    explicit fbTrayIcon(QObject* parent);

    void AddTrayIcon(const QIcon& icon);
    void ChangeTrayIcon(const QIcon& icon) { tray_.setIcon(icon); }
    void Notify(const QString& words) { tray_.showMessage(tray_.toolTip(), words, QSystemTrayIcon::Warning); }
    void RemoveTrayIcon() { tray_.hide(); }

    QString TrayIconTip() const { return tray_.toolTip(); }
    void SetTrayIconTip(const QString& tip) { tray_.setToolTip(tip); }

  signals:
    void Clicked();

  private:
    QSystemTrayIcon tray_;
};

}  // namespace norvelis::ui
