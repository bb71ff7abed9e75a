#pragma once

#include <QApplication>
#include <memory>

#include "core/app_state.h"
#include "desktop/main_frame.h"
#include "ui/frame/qt_host.h"

namespace norvelis::desktop {

/// The running program: owner of the state, the Host and the main frame.
class Application : public QApplication {
  public:
    Application(int& argc, char** argv);
    ~Application() override;

    /// Starts the program in `applicationFolder` and stays until it ends. The result is the exit status: 0,
    /// or 1 after a run-time failure.
    int Run(const std::string& applicationFolder);

    /// Shows the failure, closes the store and ends the program.
    void Fail(const std::exception& failure);

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    ui::QtHost host_;
    SystemClock clock_;
    std::unique_ptr<AppState> app_;
    std::unique_ptr<DrawingTools> tools_;
    std::unique_ptr<ui::mdiMainMenu> frame_;
    bool failed_ = false;
};

}  // namespace norvelis::desktop
