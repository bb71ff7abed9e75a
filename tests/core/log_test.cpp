#include "core/log.h"

#include <gtest/gtest.h>

#include "base/paths.h"
#include "testing/scripted_host.h"
#include "testing/temporary_folder.h"

namespace norvelis {
namespace {

class FixedClock : public Clock {
  public:
    DateTime Now() override { return ToDateTime({2026, 11, 24, 8, 30, 0}); }
};

class LogTest : public ::testing::Test {
  protected:
    TemporaryFolder folder;
    ScriptedHost host;
    FixedClock clock;
    AppState app{folder.Path(), host, clock, Random(1)};
};

TEST_F(LogTest, LinesAreAppendedInTheirFixedForm) {
    CreateFolder(folder.Path("INI"));
    WriteToProcessLog(app, "Startup", "Sub Main", "one");
    WriteToProcessLog(app, "Startup", "Sub Main", "two");
    EXPECT_EQ(ReadFile(folder.Path("INI/ProcessLog.Txt")),
              "11/24/2026 8:30:00 AM: Startup ---- Sub Main ---- one\r\n"
              "11/24/2026 8:30:00 AM: Startup ---- Sub Main ---- two\r\n");
}

TEST_F(LogTest, AnErrorIsLoggedTwiceAndAlwaysShown) {
    CreateFolder(folder.Path("INI"));
    bool show = false;
    Icon icon = Icon::None;
    WriteToErrorLog(app, "m", "p", "went wrong", 9, show, "", icon);
    EXPECT_TRUE(show);
    EXPECT_EQ(icon, Icon::Critical);
    EXPECT_EQ(ReadFile(folder.Path("INI/ErrorLog.Txt")),
              "11/24/2026 8:30:00 AM: m ---- p ---- went wrong ---- 9 ---- \r\n");
    EXPECT_EQ(ReadFile(folder.Path("INI/ProcessLog.Txt")),
              "11/24/2026 8:30:00 AM: GlobalFunctions ---- WriteToErrorLog sub ---- Details:m ---- p ---- "
              "went wrong ---- "
              "9 ---- \r\n");
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].title, "Error...");
    EXPECT_EQ(host.messages[0].text,
              "The following error has occured in your program: \r\n\r\nwent wrong\r\n\r\nError Number: 9");

    icon = Icon::Information;
    WriteToErrorLog(app, "m", "p", "d", 1, show, "own words", icon);
    EXPECT_EQ(host.messages[1].text, "own words");
    EXPECT_EQ(host.messages[1].icon, Icon::Information);
}

TEST_F(LogTest, ALogThatCannotBeWrittenStopsNobody) {
    WriteToProcessLog(app, "m", "p", "t");
    WriteToErrorLog(app, "m", "p", "d", 1);
    EXPECT_EQ(host.messages.size(), 1u);
}

}  // namespace
}  // namespace norvelis
