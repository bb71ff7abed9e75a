#include "desktop/application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPushButton>

#include "base/failure.h"
#include "ui/ui_app.h"

namespace norvelis::desktop {
namespace {

using ui::UiFolder;
using ui::WhenWaiting;

Application* application = nullptr;

void SetGoodSettings(const UiFolder& folder) {
    ScriptedHost host;
    StillClock clock;
    AppState app(folder.Path(), host, clock, Random(1));
    app.gConnection = Connection::Open(ConnectionString(folder.Path("Database/records.mdb")));
    setreportlocation(app, folder.Path("reportfiles/empschm.text"));
    setvisiolocation(app, folder.Path("visio files/"));
}

ui::mdiMainMenu* Frame() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* frame = qobject_cast<ui::mdiMainMenu*>(window); frame && frame->isVisible()) return frame;
    }
    return nullptr;
}

/// Once the main frame stands and its start, which turns the event loop too, is over.
void WhenStarted(std::function<void(ui::mdiMainMenu&)> act) {
    QTimer::singleShot(20, [act = std::move(act)] {
        if (auto* frame = Frame();
            frame && frame->Find(Screen::Treeview) && !frame->Context().commands.Busy()) {
            act(*frame);
        } else {
            WhenStarted(act);
        }
    });
}

TEST(ApplicationTest, ItStartsAndEndsInGoodOrder) {
    const UiFolder folder;
    SetGoodSettings(folder);
    WhenStarted([](ui::mdiMainMenu& frame) { frame.close(); });
    EXPECT_EQ(application->Run(folder.Path()), 0);
    EXPECT_THAT(ReadFile(folder.Path("INI/ProcessLog.Txt")), ::testing::HasSubstr("Complete without errors"));
}

TEST(ApplicationTest, AFailureIsShownOnceAndEndsWithStatusOne) {
    const UiFolder folder;
    DeleteFile(folder.Path("Database/records.mdb"));
    QString text;
    WhenWaiting([&](QWidget& waiting) {
        text = dynamic_cast<QMessageBox&>(waiting).text();
        EXPECT_EQ(Frame(), nullptr);
        dynamic_cast<QDialog&>(waiting).accept();
    });
    EXPECT_EQ(application->Run(folder.Path()), 1);
    EXPECT_THAT(text.toStdString(), ::testing::StartsWith("Run-time error '3709':"));
}

TEST(ApplicationTest, ABrokenReportEndsTheProgramAndKeepsWhatWasGathered) {
    const UiFolder folder;
    SetGoodSettings(folder);
    const std::string report = folder.Path("reportfiles/empschm.text"), text = ReadFile(report);
    WriteFile(report, text.substr(0, text.find("RECORD NAME........ ") + 60));
    std::function<void(QWidget&)> agree;
    std::vector<std::string> texts;
    agree = [&](QWidget& waiting) {
        auto& box = dynamic_cast<QMessageBox&>(waiting);
        texts.push_back(box.text().toStdString());
        const bool last = texts.size() == 3;
        box.defaultButton()->click();
        if (!last) WhenWaiting(agree);
    };
    WhenStarted([&](ui::mdiMainMenu& frame) {
        WhenWaiting(agree);
        frame.findChild<QAction*>("mnu_Classic_Extract_Report")->trigger();
    });
    EXPECT_EQ(application->Run(folder.Path()), 1);
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_THAT(texts[2], ::testing::StartsWith("Run-time error '62':"));
    const auto store = Connection::Open(ConnectionString(folder.Path("Database/records.mdb")));
    EXPECT_EQ(store->Count("Select count(*) FROM schema_details"), 1);
}

}  // namespace
}  // namespace norvelis::desktop

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    norvelis::desktop::Application application(argc, argv);
    norvelis::desktop::application = &application;
    return RUN_ALL_TESTS();
}
