#include "scheduler/audit_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/paths.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using testing::HasSubstr;

TEST(AuditLogTest, TellsEachRunAndReadsItBack) {
    TestApp test;
    Job job;
    job.scheduleid = 7;
    job.name = "night ---- ly\r\nB";
    job.idmsreport = "/r/empschm.text";
    job.nextschedule = ToDateTime({2026, 11, 24, 8, 0, 0});
    WriteBegin(test.app, job);  // Interrupted.
    test.clock.now = ToDateTime({2026, 11, 24, 9, 0, 0});
    WriteBegin(test.app, job);
    RunEnd end{RunResult::Invalid, 3, 20, 1, 1.25, "Invalid IDMS Report File :x\r\nAction terminated"};
    WriteEnd(test.app, job, end);
    EXPECT_EQ(
        ReadFile(test.folder.Path("AuditLogs/Logfile.txt")),
        "11/24/2026 8:30:00 AM: begin ---- 7 ---- night --- ly B ---- /r/empschm.text ---- due 11/24/2026 "
        "8:00:00 AM, 1800 s late\r\n"
        "11/24/2026 9:00:00 AM: begin ---- 7 ---- night --- ly B ---- /r/empschm.text ---- due 11/24/2026 "
        "8:00:00 AM, 3600 s late\r\n"
        "11/24/2026 9:00:00 AM: end ---- 7 ---- night --- ly B ---- invalid ---- 3 records, 20 sets, 1 "
        "drawings ---- 1.2 s ---- Invalid IDMS Report File :x Action terminated\r\n");
    const auto runs = ReadHistory(test.app);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_FALSE(runs[0].ended);
    EXPECT_EQ(runs[1].due, "11/24/2026 8:00:00 AM");
    EXPECT_EQ(runs[1].secondsLate, 3600);
    ASSERT_TRUE(runs[1].ended);
    EXPECT_EQ(runs[1].ended->result, RunResult::Invalid);
    EXPECT_EQ(runs[1].ended->sets, 20u);
    EXPECT_EQ(runs[1].ended->words, "Invalid IDMS Report File :x Action terminated");
}

TEST(AuditLogTest, AFullLogMakesSpaceAndTheFormerOneIsKeptOnce) {
    TestApp test;
    const std::string log = test.folder.Path("AuditLogs/Logfile.txt");
    std::filesystem::create_directories(test.folder.Path("AuditLogs"));
    const auto fill = [&](const std::string& head) {
        WriteFile(log, head + "\r\n");
        std::filesystem::resize_file(log, 10'000'000);
    };
    const std::string begin = "1/1/2026: begin ---- 1 ---- n ---- r ---- due 1/1/2026, 0 s late";
    fill("first " + begin);
    WriteEnd(test.app, Job{}, RunEnd{});
    fill("second " + begin);
    WriteBegin(test.app, Job{});
    EXPECT_LT(std::filesystem::file_size(log), 1000u);
    const auto runs = ReadHistory(test.app);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_THAT(runs[0].begin, HasSubstr("second"));
    EXPECT_TRUE(ClearAuditLog(test.app));
    EXPECT_EQ(ReadFile(log), "");
    EXPECT_TRUE(ReadHistory(test.app).empty());
}

}  // namespace
}  // namespace norvelis
