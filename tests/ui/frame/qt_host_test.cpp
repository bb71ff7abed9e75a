#include <gtest/gtest.h>

#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QThread>
#include <atomic>
#include <chrono>
#include <thread>

#include "ui/frame/qt_host.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kPatience = std::chrono::seconds(60);  // For what never comes.

class Display : public HostDisplay {
  public:
    int statuses = 0, bars = 0;
    QString status;
    double value = 0;
    QWidget* window = nullptr;
    QWidget* Window() override { return window; }
    void ShowStatus(const QString& text) override {
        status = text;
        ++statuses;
    }
    void ShowProgress(Bar, const ProgressBar& state) override {
        value = state.Value;
        ++bars;
    }
    void OpenScreen(Screen, bool) override {}
};

TEST(QtHostTest, BoxesShowTextTitleIconAndButtons) {
    QtHost host;
    QString text, title, defaultButton;
    QMessageBox::Icon icon{};
    WhenWaiting([&](QWidget& waiting) {
        auto& box = dynamic_cast<QMessageBox&>(waiting);
        text = box.text();
        title = box.windowTitle();
        icon = box.icon();
        defaultButton = box.defaultButton()->text();
        box.button(QMessageBox::Cancel)->click();
    });
    EXPECT_EQ(
        host.MessageBox({"<b>One</b>\r\ntwo", "Title", Buttons::YesNoCancel, Icon::Question, Answer::No}),
        Answer::Cancel);
    EXPECT_EQ(text, "<b>One</b>\ntwo");
    EXPECT_EQ(title, "Title");
    EXPECT_EQ(icon, QMessageBox::Question);
    EXPECT_EQ(defaultButton.remove('&'), "No");

    WhenWaiting([&](QWidget& waiting) {
        title = waiting.windowTitle();
        QTest::keyClick(&waiting, Qt::Key_Return);
    });
    host.MessageBox("Plain");
    EXPECT_EQ(title, "Norvelis");
    WhenWaiting([](QWidget& waiting) { QTest::keyClick(&waiting, Qt::Key_Return); });
    EXPECT_EQ(host.MessageBox({"Ask", {}, Buttons::YesNo, Icon::None, Answer::Ok}), Answer::Yes);
    WhenWaiting([](QWidget& waiting) { QTest::keyClick(&waiting, Qt::Key_Escape); });
    EXPECT_EQ(host.MessageBox({"Ask", {}, Buttons::YesNo, Icon::None, Answer::Ok}), Answer::No);
}

TEST(QtHostTest, BoxesAreOverTheWindowAndBeforeItIsShownInTheMiddleOfTheScreen) {
    QtHost host;
    Display display;
    QWidget window;
    display.window = &window;
    host.SetDisplay(&display);
    const auto middleOfBox = [&] {
        QPoint middle;
        WhenWaiting([&](QWidget& box) {
            middle = box.frameGeometry().center();
            QTest::keyClick(&box, Qt::Key_Return);
        });
        host.MessageBox("Plain");
        return middle;
    };
    const auto near = [](QPoint one, QPoint other) { return (one - other).manhattanLength() < 40; };
    const QPoint screen = window.screen()->availableGeometry().center();
    window.setGeometry(400, 420, 300, 300);
    EXPECT_TRUE(near(middleOfBox(), screen));
    window.show();
    EXPECT_TRUE(near(middleOfBox(), window.geometry().center()));
    EXPECT_FALSE(near(window.geometry().center(), screen));
}

TEST(QtHostTest, AnInputBoxGivesItsTextOrNothing) {
    QtHost host;
    WhenWaiting([](QWidget& waiting) {
        auto* line = waiting.findChild<QLineEdit*>();
        EXPECT_EQ(line->text(), "before");
        line->setText("after");
        dynamic_cast<QDialog&>(waiting).accept();
    });
    EXPECT_EQ(host.InputBox("Name?", "Names", "before"), "after");
    WhenWaiting([](QWidget& waiting) { dynamic_cast<QDialog&>(waiting).reject(); });
    EXPECT_EQ(host.InputBox("Name?", "Names", "before"), std::nullopt);
}

TEST(QtHostTest, TheWaitCursorIsNotCountedAndAQuestionSuspendsIt) {
    QtHost host;
    host.WaitCursor(true);
    host.WaitCursor(true);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    bool waiting = true;
    WhenWaiting([&](QWidget& box) {
        waiting = QApplication::overrideCursor() != nullptr;
        dynamic_cast<QDialog&>(box).accept();
    });
    host.MessageBox("Ask");
    EXPECT_FALSE(waiting);
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    host.WaitCursor(false);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(QtHostTest, HoweverOftenThingsChangeTheScreenSeesTheLastOfATurn) {
    QtHost host;
    Display display;
    host.SetDisplay(&display);
    ProgressBar state;
    for (int i = 1; i <= 1000; ++i) {
        host.Status("line " + std::to_string(i));
        state.Value = i;
        host.ProgressChanged(Bar::TreeviewValue, state);
    }
    EXPECT_EQ(display.statuses, 0);
    UiApp::Settle();
    EXPECT_EQ(display.status, "line 1000");
    EXPECT_EQ(display.value, 1000);
    EXPECT_EQ(display.statuses, 1);
    EXPECT_EQ(display.bars, 1);
}

TEST(QtHostTest, YieldTurnsTheEventLoopButNotAtEveryCall) {
    QtHost host;
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++turns; });
    timer.start(0);
    host.Yield();
    const int afterFirst = turns;
    EXPECT_GE(afterFirst, 1);
    for (int i = 0; i < 1000; ++i) host.Yield();
    EXPECT_LT(turns, 1000);
}

TEST(QtHostTest, WorkInTheBackgroundLeavesTheEventLoopItsTurns) {
    QtHost host;
    std::atomic<int> turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++turns; });
    timer.start(0);
    QThread* thread = QThread::currentThread();
    host.RunInBackground([&](std::stop_token) {
        thread = QThread::currentThread();
        for (const auto give = kPatience + Clock::now(); turns == 0 && Clock::now() < give;)
            std::this_thread::yield();
    });
    EXPECT_NE(thread, QThread::currentThread());
    EXPECT_GT(turns, 0);
    EXPECT_THROW(host.RunInBackground([](std::stop_token) { throw std::runtime_error("no"); }),
                 std::runtime_error);
}

TEST(QtHostTest, WorkInTheBackgroundLearnsThatThePersonCancels) {
    QtHost host;
    bool stopped = false;
    QTimer::singleShot(0, [&] { host.Cancel(); });
    host.RunInBackground([&](std::stop_token canceled) {
        for (const auto give = kPatience + Clock::now(); !canceled.stop_requested() && Clock::now() < give;)
            std::this_thread::yield();
        stopped = canceled.stop_requested();
    });
    EXPECT_TRUE(stopped);
}

}  // namespace
}  // namespace norvelis::ui
