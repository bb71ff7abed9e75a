#pragma once

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <memory>

#include "core/settings.h"
#include "desktop/main_frame.h"
#include "testing/ui_folder.h"
#include "ui/controls/c_tree_view.h"
#include "ui/forms/form.h"
#include "ui/frame/mdi_main_menu.h"
#include "ui/frame/qt_host.h"

// What benchmarks of the windows share.
namespace norvelis::ui {

/// The Host of the real screens; boxes are answered at once.
class AgreeingHost : public QtHost {
  public:
    using Host::MessageBox;
    Answer MessageBox(const Message& message) override {
        return message.buttons == Buttons::Ok ? Answer::Ok : Answer::Yes;
    }
};

/// The program's windows on a folder of their own.
struct Windows {
    UiFolder folder;
    AgreeingHost host;
    SystemClock clock;
    AppState app{folder.Path(), host, clock, Random(1)};
    std::unique_ptr<desktop::DrawingTools> tools;
    std::unique_ptr<mdiMainMenu> frame;

    Windows() {
        app.gConnection = Connection::Open(ConnectionString(folder.Path("Database/records.mdb")));
        setvisiolocation(app, folder.Path("visio files/"));
    }
    ~Windows() { host.SetDisplay(nullptr); }

    void Open() {
        tools = std::make_unique<desktop::DrawingTools>(app);
        frame = desktop::MakeMainFrame(app, *tools, [](const std::exception& failure) { throw failure; });
        host.SetDisplay(frame.get());
        frame->ApplySkinAndShow();
        frame->LoadProgressForm();
        host.OpenScreen(Screen::Treeview, false);
        QTest::qWait(100);
    }
    Form& TreeScreen() const { return *frame->Find(Screen::Treeview); }
    cTreeView& Tview() const { return *TreeScreen().findChild<cTreeView*>("Tview"); }
};

/// The longest time between two turns of the event loop.
class Pulse {
  public:
    Pulse() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Beat(); });
        timer_.start(2);
        since_.start();
    }
    double Longest() {
        Beat();
        return static_cast<double>(longest_) / 1e9;
    }

  private:
    void Beat() {
        longest_ = std::max(longest_, since_.nsecsElapsed());
        since_.restart();
    }
    QTimer timer_;
    QElapsedTimer since_;
    qint64 longest_ = 0;
};

}  // namespace norvelis::ui
