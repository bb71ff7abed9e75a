#include "commands/schedule_engine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/paths.h"
#include "drawing/automation/create_engine.h"
#include "testing/small_report.h"
#include "testing/test_store.h"

namespace norvelis::commands {
namespace {

class ScheduleEngineTest : public testing::Test {
  protected:
    std::int64_t Book(const std::string& name, const std::string& report) {
        Job job;
        job.name = name;
        job.idmsreport = report;
        std::vector<std::int64_t> ids;
        CreateJobs(test.app, job, {"1/1/2020"}, ids);
        return ids.at(0);
    }
    EngineScreen Screen() {
        return {[this](const std::string& name, const std::function<void()>& work) {
                    commands.push_back(name);
                    test.host.RunCancelable(work);
                },
                [this] { return busy; }, [this] { ++refreshed; }, [] {},
                [this](const std::string& words) { notified.push_back(words); }};
    }
    void TickTimes(int times) {
        for (int i = 0; i < times; ++i) engine.Tick();
    }

    TestApp test;
    std::vector<std::string> commands, notified;
    bool busy = false;
    int refreshed = 0;
    std::unique_ptr<engine::DrawingEngine> drawing =
        drawing::MakeDrawingEngine({NORVELIS_APP "/Stencils", test.app.AppPath("\\Temp"), nullptr});
    ScheduleEngine engine{test.app, *drawing, Screen()};
};

TEST_F(ScheduleEngineTest, RunsJobsAsLongCommandsAndStopsAtAFailure) {
    const std::string report = test.folder.Path("small.txt");
    WriteFile(report, HeaderOf("SMALL") + RecordHead("EMP", "CALC USING KEY") + SetLine("CALC"));
    const std::int64_t missing = Book("first", "/gone.txt"), bad = Book("../second", report);
    engine.Start();
    busy = true;
    TickTimes(40);
    busy = false;
    EXPECT_TRUE(commands.empty()) << "lost while a person's command runs";
    TickTimes(17);
    EXPECT_THAT(commands, testing::ElementsAre("The scheduled run of first"));
    EXPECT_TRUE(FindJob(*test.app.gConnection, missing)->processed);
    EXPECT_EQ(refreshed, 1);
    TickTimes(16);
    EXPECT_FALSE(engine.IsStarted());
    EXPECT_FALSE(FindJob(*test.app.gConnection, bad)->processed);
    EXPECT_THAT(test.host.Texts(), testing::ElementsAre("An error was found. Terminating Schedule runs"));
    ASSERT_EQ(notified.size(), 2u);
    EXPECT_THAT(notified[0], testing::StartsWith("first: Invalid IDMS Report File"));
    EXPECT_THAT(notified[1], testing::StartsWith("../second: Run-time error '76'"));
}

TEST_F(ScheduleEngineTest, AsksBeforeItsScreenIsClosed) {
    EXPECT_TRUE(engine.AskToClose());
    EXPECT_TRUE(test.host.messages.empty());
    engine.Start();
    test.host.answers = {Answer::No, Answer::Yes};
    EXPECT_FALSE(engine.AskToClose());
    EXPECT_TRUE(engine.IsStarted());
    EXPECT_TRUE(engine.AskToClose());
    EXPECT_FALSE(engine.IsStarted());
    EXPECT_EQ(test.host.Texts().back(), "Schedules are running. Exit Anyway?");
}

}  // namespace
}  // namespace norvelis::commands
