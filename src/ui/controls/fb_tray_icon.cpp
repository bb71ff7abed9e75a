#include "ui/controls/fb_tray_icon.h"

namespace norvelis::ui {

fbTrayIcon::fbTrayIcon(QObject* parent) : QObject(parent) {
    connect(&tray_, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) emit Clicked();
    });
}

void fbTrayIcon::AddTrayIcon(const QIcon& icon) {
    if (!QSystemTrayIcon::isSystemTrayAvailable()) return;
    tray_.setIcon(icon);
    tray_.show();
}

}  // namespace norvelis::ui
