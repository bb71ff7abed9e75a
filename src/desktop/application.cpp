#include "desktop/application.h"

#include <QTimer>

#include "base/failure.h"
#include "commands/start_up.h"
#include "desktop/main_frame.h"
#include "store/connection.h"
#include "ui/frame/mdi_main_menu.h"
#include "ui/skins/program_icon.h"
#include "ui/skins/skin_style.h"

namespace norvelis::desktop {

namespace {

constexpr int kFailed = 1;

std::string Words(const std::exception& failure) {
    const auto* known = dynamic_cast<const RuntimeFailure*>(&failure);
    if (!known) return failure.what();
    return "Run-time error '" + std::to_string(static_cast<int>(known->Number())) + "':\r\n\r\n" +
           failure.what();
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName("Norvelis");  // No display name: the platform would add it to every box's title.
    setApplicationVersion(NORVELIS_VERSION);
    setWindowIcon(ui::ProgramIcon());
    setQuitOnLastWindowClosed(false);  // Boxes come before the frame and are no last window.
    ui::UseSkinStyle(*this);
}

Application::~Application() = default;

int Application::Run(const std::string& applicationFolder) {
    failed_ = false;
    app_ = std::make_unique<AppState>(applicationFolder, host_, clock_, Random::FromDevice());
    tools_ = std::make_unique<DrawingTools>(*app_);
    frame_ = MakeMainFrame(*app_, *tools_, [this](const std::exception& failure) { Fail(failure); });
    host_.SetDisplay(frame_.get());
    connect(frame_.get(), &ui::mdiMainMenu::Unloaded, this, [] { quit(); });
    QTimer::singleShot(0, this, [this] { frame_->Run([this] { commands::SubMain(*app_, *frame_); }); });
    const int status = exec();
    host_.SetDisplay(nullptr);
    frame_.reset();
    return failed_ ? kFailed : status;
}

void Application::Fail(const std::exception& failure) {
    if (failed_) return;
    failed_ = true;
    host_.WaitCursor(false);
    host_.MessageBox({Words(failure), {}, Buttons::Ok, Icon::Critical, Answer::Ok});
    if (app_->gConnection) app_->gConnection->Close();
    exit(kFailed);
}

// What a handler of a single control let through. Failures of commands are taken by the frame.
bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        Fail(failure);
        return true;
    }
}

}  // namespace norvelis::desktop
