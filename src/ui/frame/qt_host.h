#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <array>
#include <chrono>
#include <optional>

#include "core/host.h"

namespace norvelis::ui {

/// What the Host shows on the screens.
class HostDisplay {
  public:
    virtual ~HostDisplay() = default;
    virtual QWidget* Window() = 0;  ///< Owner of boxes and dialogs.
    virtual void ShowStatus(const QString& text) = 0;
    virtual void ShowProgress(Bar bar, const ProgressBar& state) = 0;
    virtual void OpenScreen(Screen screen, bool modal) = 0;
};

/// The Host of the desktop program. Boxes, dialogs, wait cursor and turns of the event loop are the
/// platform's; the rest goes to the display once there is one. Work in the background has a thread of its
/// own. Status and bars are repainted at turns of the event loop, however often they change.
class QtHost : public QObject, public Host {
  public:
    using Host::MessageBox;

    QtHost();

    void SetDisplay(HostDisplay* display) { display_ = display; }

    Answer MessageBox(const Message& message) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& initial) override;
    std::optional<std::string> OpenFileDialog(const std::string& title, const std::string& filter) override;
    std::optional<std::string> SaveFileDialog(const std::string& title, const std::string& filter,
                                              const std::string& proposed) override;
    std::optional<std::string> FolderDialog(const std::string& title) override;
    void Status(const std::string& text) override;
    void ProgressChanged(Bar bar, const ProgressBar& state) override;
    void WaitCursor(bool on) override;
    void OpenScreen(Screen screen, bool modal) override;
    void RunInBackground(const BackgroundWork& work) override;

  protected:
    void Turn() override;

  private:
    /// Boxes are over it; before it is shown there is none, and they are in the middle of the screen.
    QWidget* Window() const;
    void Flush();

    HostDisplay* display_ = nullptr;
    QTimer flush_;
    std::optional<std::string> status_;
    std::array<std::optional<ProgressBar>, 4> bars_;
    std::chrono::steady_clock::time_point lastTurn_{};
};

}  // namespace norvelis::ui
