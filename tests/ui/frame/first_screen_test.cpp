#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>

#include "ui/ui_app.h"

// What is on the screen after a start.
namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;

TEST(StartUpOnScreen, TheTreeStandsInTheFrame) {
    UiApp ui;
    ui.Start();
    EXPECT_TRUE(ui.frame->isVisible());
    ASSERT_NE(ui.frame->Find(Screen::Treeview), nullptr);
    EXPECT_TRUE(ui.frame->Find(Screen::Treeview)->isVisible());
    EXPECT_EQ(ui.Find<QLabel>("version")->text(), "Norvelis - Version 1.2.3");
    EXPECT_TRUE(ui.host.messages.empty());
}

TEST(StartUpOnScreen, AnEmptyReportOpensSettingsAndPicker) {
    UiApp ui;
    setreportlocation(ui.app, "");
    std::string caption;
    WhenWaiting([&](QWidget& waiting) {
        caption = waiting.objectName().toStdString();
        EXPECT_TRUE(ui.frame->Find(Screen::Settings)->isVisible());
        waiting.close();
    });
    ui.Start();
    EXPECT_EQ(caption, "setDirectory");
    EXPECT_EQ(ui.host.messages.size(), 1U);
    EXPECT_TRUE(ui.failures.empty());
}

TEST(StartUpOnScreen, TheSchedulerMayBeTheFirst) {
    UiApp ui;
    setstartupform(ui.app, "Scheduler");
    ui.Start();
    ASSERT_NE(ui.frame->Find(Screen::Scheduler), nullptr);
    EXPECT_TRUE(ui.frame->Find(Screen::Scheduler)->isVisible());
}

TEST(StartUpOnScreen, AScreenThatIsNotThereYetIsSaidPlainly) {
    UiApp ui;
    setstartupform(ui.app, "ConvertSQL");
    ui.Start();
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("\"IDMS to SQL\" is not there yet."));
    EXPECT_TRUE(ui.frame->isVisible());
}

}  // namespace
}  // namespace norvelis::ui
