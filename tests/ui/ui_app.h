#pragma once

#include <QAction>
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/ini.h"
#include "base/paths.h"
#include "core/settings.h"
#include "desktop/main_frame.h"
#include "testing/test_store.h"
#include "testing/ui_folder.h"
#include "ui/forms/form.h"
#include "ui/frame/child_area.h"
#include "ui/frame/mdi_main_menu.h"
#include "ui/frame/qt_host.h"

namespace norvelis::ui {

/// The Host of the real screens, but for boxes: it records them and answers from a list (Ok or Yes when that
/// is empty).
class RecordingHost : public QtHost {
  public:
    using Host::MessageBox;

    std::vector<Message> messages;
    std::deque<Answer> answers;
    std::function<void(const Message&)> during;  ///< What happens while a box is open.
    std::function<void()> eachTurn = [] {};
    bool everyTurn =
        false;  ///< Take each offered turn, so that what is seen does not hang on the machine's speed.

    Answer MessageBox(const Message& message) override {
        messages.push_back(message);
        if (during) during(message);
        if (message.buttons == Buttons::Ok) return Answer::Ok;
        if (answers.empty()) return Answer::Yes;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void Turn() override {
        eachTurn();
        if (everyTurn) {
            QApplication::processEvents();
        } else {
            QtHost::Turn();
        }
    }
    std::vector<std::string> TakeTexts() {
        std::vector<std::string> texts;
        for (const Message& message : std::exchange(messages, {})) texts.push_back(message.text);
        return texts;
    }
};

/// The program's real windows on a folder of their own.
struct UiApp {
    UiFolder folder;
    RecordingHost host;
    StillClock clock;
    AppState app{folder.Path(), host, clock, Random(1)};
    std::vector<std::string> failures;  ///< That no handler took.
    std::unique_ptr<desktop::DrawingTools> tools;
    std::unique_ptr<mdiMainMenu> frame;

    UiApp() { SetGoodSettings(); }
    ~UiApp() { host.SetDisplay(nullptr); }

    void SetGoodSettings() {
        app.gConnection = Connection::Open(ConnectionString(folder.Path("Database/records.mdb")));
        setreportlocation(app, folder.Path("reportfiles/empschm.text"));
        setvisiolocation(app, folder.Path("visio files/"));
    }
    void Start() {
        MakeFrame();
        frame->Run([this] { commands::SubMain(app, *frame); });
        Settle();
    }
    void MakeFrame() {
        frame.reset();
        tools = std::make_unique<desktop::DrawingTools>(app);
        frame = desktop::MakeMainFrame(
            app, *tools, [this](const std::exception& failure) { failures.push_back(failure.what()); });
        host.SetDisplay(frame.get());
    }

    static void Settle() {
        for (int i = 0; i < 5; ++i) QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    template <typename T>
    T* Find(const char* name) const {
        T* found = frame->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void Choose(const char* menuEntry) {
        Find<QAction>(menuEntry)->trigger();
        Settle();
    }
    void Click(const char* control) {
        auto* widget = Find<QWidget>(control);
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, widget->rect().center());
        Settle();
    }
    std::string Ini(const char* section, const char* key) const {
        return ReadINIValue(section, key, folder.Path("INI/Local.Ini"));
    }
    std::string Log() const { return ReadFile(folder.Path("INI/ProcessLog.Txt")); }
};

/// Once a window waits for an answer, `act` gets it, in the middle of whatever called it. The patience is for
/// a window that never comes, and long enough for a machine with other work.
inline void WhenWaiting(std::function<void(QWidget&)> act, int patience = 6000) {
    QTimer::singleShot(5, [act = std::move(act), patience] {
        if (QWidget* waiting = QApplication::activeModalWidget()) {
            act(*waiting);
        } else if (patience > 0) {
            WhenWaiting(act, patience - 1);
        } else {
            ADD_FAILURE() << "no window waits";
            QApplication::exit(1);
        }
    });
}

}  // namespace norvelis::ui
