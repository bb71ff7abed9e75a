#include "ui/forms/long_commands.h"

#include <QAbstractButton>

#include "base/text.h"

namespace norvelis::ui {

LongCommands::LongCommands(Host& host, Fail fail) : host_(host), fail_(std::move(fail)) {}

void LongCommands::Run(const LongCommand& command, const std::function<void()>& work) {
    if (busy_) {
        host_.MessageBox(
            {command_.name + " is still running.", {}, Buttons::Ok, Icon::Information, Answer::Ok});
        return;
    }
    command_ = command;
    busy_ = true;
    emit BusyChanged(true);
    try {
        if (!host_.RunCancelable(work)) ConfirmCancel();
    } catch (const std::exception& failure) {
        fail_(failure);
    }
    busy_ = false;
    emit BusyChanged(false);
}

void LongCommands::Cancel() {
    if (!busy_) return;
    host_.Cancel();
    host_.Status("Canceling...");
}

void LongCommands::ConfirmCancel() {
    host_.Status({});
    host_.MessageBox({command_.name + " was canceled." + std::string(kLineBreak) + host_.AfterCancel(),
                      {},
                      Buttons::Ok,
                      Icon::Information,
                      Answer::Ok});
}

void LongCommands::CancelsBy(QAbstractButton* button) {
    button->setVisible(busy_);
    connect(button, &QAbstractButton::clicked, this, [this, button] {
        button->setEnabled(false);
        Cancel();
    });
    connect(this, &LongCommands::BusyChanged, button, [button](bool busy) {
        button->setEnabled(true);
        button->setVisible(busy);
    });
}

}  // namespace norvelis::ui
