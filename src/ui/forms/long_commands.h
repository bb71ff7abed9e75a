#pragma once

#include <QObject>
#include <functional>
#include <string>

#include "core/host.h"

class QWidget;

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

    /// Runs the command to its end; a failure that comes out of it ends the program. While another one runs a
    /// box says so instead.
    void Run(const LongCommand& command, const std::function<void()>& work);

    bool Busy() const { return busy_; }
    void DisableWhileBusy(QWidget* control);

    /// Of the command that runs or ran last: what it reported at its end may be painted after it.
    Screen ProgressScreen() const { return command_.progress; }

  signals:
    void BusyChanged(bool busy);

  private:
    Host& host_;
    Fail fail_;
    LongCommand command_{{}, Screen::Treeview};
    bool busy_ = false;
};

}  // namespace norvelis::ui
