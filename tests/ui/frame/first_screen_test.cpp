#include <gtest/gtest.h>

#include <QLabel>

#include "ui/ui_app.h"

// What is on the screen after a start.
namespace norvelis::ui {
namespace {

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

TEST(StartUpOnScreen, AnotherScreenIsFirstWhenTheSettingNamesIt) {
    for (const auto& [name, screen] :
         {std::pair("Listview", Screen::Listview), std::pair("Scheduler", Screen::Scheduler),
          std::pair("ConvertSQL", Screen::ConvertSql)}) {
        SCOPED_TRACE(name);
        UiApp ui;
        setstartupform(ui.app, name);
        ui.Start();
        ASSERT_NE(ui.frame->Find(screen), nullptr);
        EXPECT_TRUE(ui.frame->Find(screen)->isVisible());
        EXPECT_EQ(ui.frame->Find(Screen::Treeview), nullptr);
    }
}

}  // namespace
}  // namespace norvelis::ui
