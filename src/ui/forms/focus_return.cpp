#include "ui/forms/focus_return.h"

#include <QApplication>

#include "ui/forms/long_commands.h"

namespace norvelis::ui {

FocusReturn::FocusReturn(LongCommands& commands) {
    connect(qApp, &QApplication::focusChanged, this, &FocusReturn::FocusMoved);
    connect(&commands, &LongCommands::BusyChanged, this, [this](bool busy) { busy_ = busy; });
    // Once everything is enabled again.
    connect(
        &commands, &LongCommands::BusyChanged, this,
        [this](bool busy) {
            if (!busy) Return();
        },
        Qt::QueuedConnection);
}

void FocusReturn::FocusMoved(QWidget* from, QWidget* to) {
    if (!busy_ || !from || from->isEnabled()) return;
    if (!button_) button_ = from;
    // The control that gets the keyboard next may be disabled too.
    if (button_ == from || instead_ == from) instead_ = to;
}

void FocusReturn::Return() {
    if (busy_) return;  // The next command has begun.
    QWidget* const button = button_;
    QWidget* const now = QApplication::focusWidget();
    if (button && button->isVisible() && button->isEnabled() && (!now || now == instead_)) button->setFocus();
    button_ = nullptr;
    instead_ = nullptr;
}

}  // namespace norvelis::ui
