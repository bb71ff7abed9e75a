#include "commands/run_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "commands/job_runner.h"
#include "core/settings.h"
#include "drawing/automation/create_engine.h"
#include "scheduler/job_folder.h"
#include "testing/small_report.h"
#include "testing/test_store.h"

namespace norvelis::commands {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RunJobTest : public testing::Test {
  protected:
    RunJobTest() {
        WriteFile(report, HeaderOf("SMALL") + RecordHead("EMP", "CALC USING KEY") + SetLine("CALC"));
        WriteFile(Path("no report.txt"), "nothing");
    }

    std::string Path(const std::string& name) const { return test.folder.Path(name); }
    std::int64_t Book(const std::string& name, const std::string& reportPath) {
        Job job;
        job.name = name;
        job.idmsreport = reportPath;
        std::vector<std::int64_t> ids;
        CreateJobs(test.app, job, {"11/24/2026 8:29:00 AM"}, ids);
        return ids.at(0);
    }
    bool IsProcessed(std::int64_t id) { return FindJob(store, id).value().processed; }
    std::string ProcessLog() const { return ReadFile(Path("INI/ProcessLog.Txt")); }
    /// How the runs of the audit log ended, the oldest first.
    std::vector<std::string> Results() const {
        std::vector<std::string> results;
        for (const RunHistory& run : ReadHistory(test.app))
            results.emplace_back(run.ended ? NameOf(run.ended->result) : "interrupted");
        return results;
    }
    JobRunner Runner(RunnerOptions options) {
        options.once = true;
        return {test.app, *engine, std::move(options), [](std::chrono::milliseconds) { return true; }};
    }

    TestApp test;
    Connection& store = *test.app.gConnection;
    const std::string report = Path("small.txt");
    std::unique_ptr<engine::DrawingEngine> engine =
        drawing::MakeDrawingEngine({NORVELIS_APP "/Stencils", test.app.AppPath("\\Temp"), nullptr});
};

TEST_F(RunJobTest, ADueRowBecomesADrawing) {
    const std::int64_t id = Book(" night; ly ", " " + report + " ");
    auto runner = Runner({});
    runner.Run();
    EXPECT_TRUE(runner.AllOk());
    EXPECT_THAT(FilesIn(Path("batchjobs/night; ly")),
                ElementsAre("SMALL.vsd", "SMALL.vsdx", "night; ly.mdb"));
    const auto copy = Connection::OpenFile(Path("batchjobs/night; ly/night; ly.mdb"));
    EXPECT_EQ(copy->Count("Select count(*) FROM Parents"), 1);
    EXPECT_EQ(copy->Select("PRAGMA integrity_check").Text("integrity_check"), "ok");
    EXPECT_EQ(store.Count("Select count(*) FROM Parents"), 0);
    EXPECT_TRUE(IsProcessed(id));
    EXPECT_EQ(FindJob(store, id)->visiofile, Path("small.vsd"));
    const std::string general = "Form Scheduler ---- General message ---- ";
    EXPECT_THAT(ProcessLog(), HasSubstr(general + "Delete all dictionaries and extract report\r\n"));
    EXPECT_THAT(ProcessLog(),
                HasSubstr(general + "Done Extracting Records from report file: \r\n" + report +
                          "\r\n into Access File:\r\n" + Path("Database/records.mdb") + "\r\n"));
    EXPECT_THAT(test.host.messages, IsEmpty());
    EXPECT_THAT(test.host.statuses, IsEmpty());
    EXPECT_THAT(test.host.progress, IsEmpty());
    const auto runs = ReadHistory(test.app);
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_EQ(runs[0].secondsLate, 60);
    EXPECT_EQ(runs[0].ended->records, 1u);
    EXPECT_EQ(runs[0].ended->drawings, 1u);
    EXPECT_EQ(runs[0].ended->words, Path("batchjobs/night; ly"));
}

TEST_F(RunJobTest, AReportThatIsNoneIsMarkedAndAFailureIsNot) {
    std::filesystem::create_directories(Path("batchjobs/taken/SMALL.vsd"));
    const struct {
        const char* name;
        std::string reportPath, result, words;
        bool processed;
    } cases[] = {
        {"a", Path("no report.txt"), "invalid", "Invalid IDMS Report File :", true},
        {"a", Path("gone.txt"), "missing", "gone.txt\r\nAction terminated", true},
        {"../a", Path("gone.txt"), "missing", "Action terminated", true},
        {"../a", report, "failed", "Run-time error '76': Path not found: ../a", false},
        {"taken", report, "failed", "Run-time error '75'", false},
        {"a", "ab", "missing", "Invalid IDMS Report File :ab", false},
    };
    std::vector<std::string> results, expected;
    for (const auto& each : cases) {
        const std::int64_t id = Book(each.name, each.reportPath);
        RunnerOptions options;
        options.onFailure = [&](const Job& job, const RunEnd& end) {
            EXPECT_EQ(job.scheduleid, id);
            results.emplace_back(NameOf(end.result));
        };
        auto runner = Runner(std::move(options));
        runner.Run();
        EXPECT_FALSE(runner.AllOk());
        EXPECT_THAT(ProcessLog(), HasSubstr(each.words));
        EXPECT_EQ(IsProcessed(id), each.processed) << each.words;
        expected.push_back(each.processed ? each.result : "failed");
        if (!each.processed) DeleteJob(store, id);
    }
    EXPECT_EQ(results, expected);
    EXPECT_EQ(Results(), expected);
    EXPECT_FALSE(FolderExists(Path("a")));
    EXPECT_THAT(FilesIn(Path("batchjobs/taken")), IsEmpty()) << "nothing half made";
}

TEST_F(RunJobTest, ARunThatIsCanceledLeavesWhatWasThere) {
    const std::int64_t id = Book("x", report);
    MakeJobFolder(test.app, "x");
    WriteFile(Path("batchjobs/x/x.mdb"), "former");
    WriteFile(Path("batchjobs/x/SMALL.vsd"), "former");
    bool wasRun = false;
    for (long at = 1; !wasRun; ++at) {
        ASSERT_LT(at, 10'000);
        test.host.yields = 0;
        test.host.cancelAtYield = at;
        auto runner = Runner({});
        wasRun = test.host.RunCancelable([&] { runner.Run(); });
        EXPECT_EQ(runner.AllOk(), wasRun);
        EXPECT_EQ(IsProcessed(id), wasRun);
        const auto files = FilesIn(Path("batchjobs/x"));
        if (files.size() == 2) {
            EXPECT_EQ(ReadFile(Path("batchjobs/x/SMALL.vsd")), "former");
        }
        if (!wasRun) {
            EXPECT_EQ(ReadFile(Path("batchjobs/x/x.mdb")), "former");
            EXPECT_EQ(Results().back(), "interrupted");
            for (const auto& file : files) EXPECT_EQ(file.find(".new"), std::string::npos) << file;
        }
    }
    EXPECT_EQ(Results().back(), "ok");
}

TEST_F(RunJobTest, ARunnerGoesOnAsItIsTold) {
    Book("../bad", report);
    const std::int64_t good = Book("good", report);
    auto stopping = Runner({});
    stopping.Run();
    EXPECT_THAT(Results(), ElementsAre("failed"));
    EXPECT_EQ(test.host.Texts().back(), "An error was found. Terminating Schedule runs");

    RunnerOptions options;
    options.keepGoing = true;
    auto going = Runner(options);
    going.Run();
    EXPECT_FALSE(going.AllOk());
    EXPECT_TRUE(IsProcessed(good));
    EXPECT_THAT(Results(), ElementsAre("failed", "failed", "ok"));

    store.Execute("Delete * FROM schedules");
    Book("x", "  ");
    store.Execute("update schedules set idmsreport = ''");
    const std::int64_t behind = Book("y", report);
    auto blocked = Runner({});
    blocked.Run();
    EXPECT_TRUE(blocked.AllOk());
    EXPECT_FALSE(IsProcessed(behind));
    EXPECT_THAT(ProcessLog(), HasSubstr("has no report; the jobs behind it wait"));

    store.Execute("Delete * FROM schedules");
    const std::int64_t held = Book("held", report);
    Book("without a report", report);
    store.Execute("update schedules set idmsreport = '' where name = 'without a report'");
    auto claim = JobClaim::Take(test.app, "held");
    options.once = true;
    JobRunner comingBack(test.app, *engine, options, [&claim](std::chrono::milliseconds time) {
        if (time.count() > 0) claim.reset();
        return true;
    });
    comingBack.Run();
    EXPECT_TRUE(IsProcessed(held)) << "once somebody else has let go of its folder";

    RunnerOptions until;
    until.until = test.clock.now;
    auto ended = Runner(until);
    ended.Run();
    EXPECT_EQ(Results().size(), 4u);
}

}  // namespace
}  // namespace norvelis::commands
