#include "ui/forms/long_commands.h"

#include <QWidget>

namespace norvelis::ui {

LongCommands::LongCommands(Host& host, Fail fail) : host_(host), fail_(std::move(fail)) {}

void LongCommands::Run(const LongCommand& command, const std::function<void()>& work) {
    if (busy_) {
        host_.MessageBox(
            {command_.name + " is still running.", {}, Buttons::Ok, Icon::Information, Answer::Ok});
        return;
    }
    command_ = command;
    host_.ForgetCancellation();
    busy_ = true;
    emit BusyChanged(true);
    try {
        work();
    } catch (const std::exception& failure) {
        fail_(failure);
    }
    busy_ = false;
    emit BusyChanged(false);
}

void LongCommands::DisableWhileBusy(QWidget* control) {
    control->setDisabled(busy_);
    connect(this, &LongCommands::BusyChanged, control, &QWidget::setDisabled);
}

}  // namespace norvelis::ui
