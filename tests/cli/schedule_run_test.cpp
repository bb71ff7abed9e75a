#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/killed_program.h"
#include "cli/program.h"
#include "drawing/package_rules.h"
#include "testing/small_report.h"

namespace norvelis {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ScheduleRun : public testing::Test {
  protected:
    ScheduleRun() {
        WriteFile(report, HeaderOf("SMALL") + RecordHead("EMP", "CALC USING KEY") + SetLine("CALC"));
    }

    void Book(const std::string& name) const {
        ASSERT_EQ(
            program.Run("schedule add " + name + " --on 2020-01-01T06:00 --tel 1 --report " + report).status,
            0);
    }
    /// It needs no display.
    Program::Result Run(const std::string& options, const std::string& before = {}) const {
        return program.Run("schedule run " + options, "unset DISPLAY QT_QPA_PLATFORM; " + before);
    }
    std::vector<std::string> Results() const {
        std::vector<std::string> results;
        for (const json& run : json::parse(program.Run("schedule history --json").out))
            results.push_back(run["result"]);
        return results;
    }
    std::string Folder(const std::string& name) const { return program.App() + "/batchjobs/" + name; }

    const Program program;
    const std::string report = program.Path("small.txt");
};

TEST_F(ScheduleRun, DueJobsAreRunOneAfterTheOther) {
    EXPECT_EQ(Run("--once").status, 0) << "nothing is due";
    Book("first");
    Book("second");
    const auto run = Run("--once");
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(FilesIn(Folder("first")), ElementsAre("SMALL.vsd", "SMALL.vsdx", "first.mdb"));
    EXPECT_THAT(drawing::PackageFaults(ReadFile(Folder("second") + "/SMALL.vsd")), IsEmpty());
    EXPECT_EQ(json::parse(program.Run("schedule list --due --json").out).size(), 0u);
    const json history = json::parse(program.Run("schedule history --json").out);
    ASSERT_EQ(history.size(), 2u);
    EXPECT_EQ(history[0]["name"], "first");
    EXPECT_EQ(history[1]["result"], "ok");
    EXPECT_EQ(history[1]["records"], 1);
    EXPECT_EQ(history[1]["due"], "1/1/2020 6:00:00 AM");
    EXPECT_FALSE(FolderExists(program.App() + "/Temp"));
}

TEST_F(ScheduleRun, ACommandIsToldOfWhatDidNotEndOkAndASignalEndsTheRunner) {
    Book("night");
    DeleteFile(report);
    const std::string told = program.Path("told");
    // The runner would look for further jobs for ever.
    const auto run = Run("--on-failure 'cat > " + told + "; kill -TERM $PPID'");
    EXPECT_EQ(run.status, 1);
    const json row = json::parse(ReadFile(told));
    EXPECT_EQ(row["scheduleid"], 1);
    EXPECT_EQ(row["name"], "night");
    EXPECT_EQ(row["result"], "missing");
    EXPECT_THAT(run.error, HasSubstr("Schedule id:1 missing: Invalid IDMS Report File :" + report));
    EXPECT_EQ(Run("--until 2020-01-01").status, 0) << "takes nothing any more";
    EXPECT_EQ(Run("--until never").status, 2);
}

TEST_F(ScheduleRun, KilledAtAnyWriteItRunsOnceMoreWithTheSameResult) {
    Book("night");
    ASSERT_EQ(Run("--once").status, 0);
    ASSERT_EQ(program.Run("schedule again 1").status, 0);
    const std::string before = ReadFile(program.StorePath());
    const std::string counted = program.Path("count");
    ASSERT_EQ(Run("--once", Loaded(kCountFileVariable, counted)).status, 0);
    const long writes = std::stol(ReadFile(counted));
    ASSERT_GT(writes, 30);
    for (long place = 1; place <= writes; place += std::max(1L, writes / 10)) {
        WriteFile(program.StorePath(), before);
        EXPECT_NE(Run("--once", Loaded(kKillAtVariable, std::to_string(place))).status, 0) << place;
        for (const char* file : {"/SMALL.vsd", "/SMALL.vsdx"})
            EXPECT_THAT(drawing::PackageFaults(ReadFile(Folder("night") + file)), IsEmpty()) << place;
        {
            const auto copy = Connection::OpenFile(Folder("night") + "/night.mdb");
            EXPECT_EQ(copy->Select("PRAGMA integrity_check").Text("integrity_check"), "ok") << place;
        }
        const bool wasDue = program.Run("schedule list --due").out != "";
        EXPECT_EQ(Run("--once").status, 0) << place;
        EXPECT_EQ(program.Run("schedule list --due").out, "") << place;
        EXPECT_EQ(FilesIn(Folder("night")).size(), 3u) << "nothing half made, killed at " << place;
        if (wasDue) {
            EXPECT_EQ(Results().back(), "ok") << place;
        }
    }
    EXPECT_THAT(Results(), testing::Contains("interrupted").Times(testing::Ge(5)));
}

}  // namespace
}  // namespace norvelis
