#pragma once

#include <QObject>
#include <functional>
#include <string>

#include "core/host.h"

class QAbstractButton;

namespace norvelis::ui {

struct LongCommand {
    std::string name;  ///< In words, for a person who wants to start another one meanwhile.
    Screen progress;   ///< The screen that shows its status and bars (Form::Progress).
};

/// The commands that take long, one at a time. The event loop has turns while one runs, so that a person can
/// go on browsing.
class LongCommands : public QObject {
    Q_OBJECT

  public:
    /// Ends the program after a failure that no handler took.
    using Fail = std::function<void(const std::exception&)>;

    LongCommands(Host& host, Fail fail);

    /// Runs the command to its end, or until the person cancels it, which a box confirms. A failure that
    /// comes out of it ends the program. While another one runs a box says so instead.
    void Run(const LongCommand& command, const std::function<void()>& work);

    bool Busy() const { return busy_; }
    void Cancel();  ///< Asks the running command to end; nothing when none runs.

    /// A QWidget or another QObject that can be enabled.
    template <typename T>
    void DisableWhileBusy(T* control) {
        control->setEnabled(!busy_);
        connect(this, &LongCommands::BusyChanged, control,
                [control](bool busy) { control->setEnabled(!busy); });
    }
    /// The button that cancels: there while a command runs, and to be pressed once.
    void CancelsBy(QAbstractButton* button);

    /// Of the command that runs or ran last: what it reported at its end may be painted after it.
    Screen ProgressScreen() const { return command_.progress; }

  signals:
    void BusyChanged(bool busy);

  private:
    void ConfirmCancel();

    Host& host_;
    Fail fail_;
    LongCommand command_{{}, Screen::Treeview};
    bool busy_ = false;
};

}  // namespace norvelis::ui
