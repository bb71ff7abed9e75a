#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "cli/program.h"
#include "testing/small_report.h"

namespace norvelis {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

class ScheduleCommands : public testing::Test {
  protected:
    ScheduleCommands() {
        WriteFile(report, HeaderOf("SMALL") + RecordHead("EMP", "CALC USING KEY") + SetLine("CALC"));
    }

    Program::Result Schedule(const std::string& arguments, const std::string& before = {}) const {
        return program.Run("schedule " + arguments, before);
    }
    Program::Result Add(const std::string& arguments) const {
        return Schedule("add " + arguments + " --report " + report);
    }
    nlohmann::json Listed(const std::string& options = {}) const {
        return nlohmann::json::parse(Schedule("list --json " + options).out);
    }

    const Program program;
    const std::string report = program.Path("small.txt");
};

const std::string kDaily = "--days 1 --at 06:00";

TEST_F(ScheduleCommands, NextPrintsTheDateShownAndThoseBehindIt) {
    const std::string may = "next " + kDaily + " --start 2026-05-01 --now 2026-04-01T10:00 --count 2 ";
    EXPECT_EQ(Schedule(may).out, "5/2/2026 6:00:00 AM\n5/3/2026 6:00:00 AM\n");
    EXPECT_EQ(Schedule(may + "--iso").out, "2026-05-02T06:00:00\n2026-05-03T06:00:00\n");
    EXPECT_EQ(Schedule(may + "--json").out, "[\"5/2/2026 6:00:00 AM\",\"5/3/2026 6:00:00 AM\"]\n");
    EXPECT_EQ(Schedule(may + "--after 2026-06-10 --json").out,
              "[\"6/11/2026 6:00:00 AM\",\"6/12/2026 6:00:00 AM\"]\n");
    EXPECT_EQ(Schedule("next --on 2026-05-01T06:00 --json").out, "[\"5/1/2026 6:00:00 AM\"]\n");
    EXPECT_EQ(Schedule("next " + kDaily + " --count 0 --json").out, "[]\n");
}

TEST_F(ScheduleCommands, EveryKindOfDefinitionHasItsOptions) {
    const struct {
        const char *options, *dates;
    } cases[] = {
        {"--weeks 2 --on-days mon,Fri --at 18:30", "[\"3/13/2026 6:30:00 PM\",\"3/23/2026 6:30:00 PM\"]\n"},
        {"--months 2 --day 15 --at 00:00", "[\"5/15/2026\",\"7/15/2026\"]\n"},
        {"--months 1 --week 2nd --weekday Tuesday --at 12:00",
         "[\"4/14/2026 12:00:00 PM\",\"5/12/2026 12:00:00 PM\"]\n"},
        {"--days 1 --interval 4h --from 08:00 --to 17:00",
         "[\"3/10/2026 4:00:00 PM\",\"3/11/2026 8:00:00 AM\"]\n"},
        {"--days 2 --interval 45m --from 11:00 --to 13:00",
         "[\"3/10/2026 12:45:00 PM\",\"3/12/2026 11:00:00 AM\"]\n"},
        {"--days 1 --at 06:00 --end 2026-03-11", "[\"3/11/2026 6:00:00 AM\",\"3/10/2026 11:00:00 AM\"]\n"},
    };
    for (const auto& c : cases) {
        const std::string command = std::string(c.options) + " --now 2026-03-10T12:00 --count 2";
        EXPECT_EQ(Schedule("next " + command + " --json").out, c.dates) << c.options;
        // The element says the same as the options did.
        const std::string file = program.Path("definition.xml");
        WriteFile(file, Schedule("next " + command + " --print-xml").out);
        EXPECT_EQ(Schedule("next --xml " + file + " --now 2026-03-10T12:00 --count 2 --json").out, c.dates);
    }
}

TEST_F(ScheduleCommands, WhatIsOddIsSaidBesideTheResult) {
    const auto odd =
        Schedule("next --months 1 --week last --weekday weekend --at 06:00 --now 2026-03-10 --count 1");
    EXPECT_EQ(odd.out, "4/28/2026 6:00:00 AM\n");
    EXPECT_EQ(odd.error, "Note: Tuesday 4/28/2026 6:00:00 AM is what \"Last Weekend\" comes out as.\n");
}

TEST_F(ScheduleCommands, WhatIsNoScheduleIsRefusedWithTheReason) {
    const struct {
        const char *xml, *reason;
    } cases[] = {{"", "No document element found"},
                 {"<schedule", "Error parsing start element tag"},
                 {"<schedule a='1' a='2'/>", "Error parsing element attribute"},
                 {"<other/>", "the element is named \"other\" and not \"schedule\""},
                 {"<schedule Occurs_DailyNum='99999'/>", "Run-time error '6': Overflow"},
                 {"<schedule NextActionDateTime='soon'/>", "Run-time error '13': Type mismatch"}};
    const std::string file = program.Path("definition.xml");
    for (const auto& c : cases) {
        WriteFile(file, c.xml);
        for (const std::string& command :
             {"next --json --xml " + file, "add x --tel 1 --report " + report + " --xml " + file}) {
            const auto result = Schedule(command);
            EXPECT_EQ(result.status, 1) << c.xml;
            EXPECT_EQ(result.out, "") << c.xml;
            EXPECT_THAT(result.error, EndsWith(std::string(c.reason) + "\n")) << c.xml;
        }
    }
    EXPECT_THAT(Schedule("next --xml " + program.Path("none")).error, HasSubstr("File not found"));
}

TEST_F(ScheduleCommands, OptionsThatDoNotGoTogetherAreWrongUsage) {
    for (const char* options :
         {"", "--days 1", "--days 1 --weeks 1 --at 06:00", "--days 1 --at 25:00", "--days x --at 06:00",
          "--days 1 --at 06:00 --interval 4h", "--days 1 --interval 4 --from 08:00 --to 17:00",
          "--days 1 --interval 4h --from 08:00", "--weeks 1 --on-days someday --at 06:00",
          "--days 1 --on-days mon --at 06:00", "--months 1 --at 06:00",
          "--months 1 --day 1 --week 1st --at 06:00", "--months 1 --week 5th --weekday day --at 06:00",
          "--on 2026-01-01 --at 06:00", "--on soon", "--days 1 --at 06:00 --start 2026-02-30",
          "--days 1 --at 06:00 --count -1", "--days 1 --at 06:00 --now x"}) {
        const auto result = Schedule(std::string("next ") + options);
        EXPECT_EQ(result.status, 2) << options;
        EXPECT_EQ(result.out, "") << options;
    }
    EXPECT_EQ(Schedule("").status, 2);
    EXPECT_EQ(Schedule("update 1").status, 2);
    EXPECT_EQ(Schedule("delete x").status, 2);
}

TEST_F(ScheduleCommands, AJobIsBookedListedChangedAndDeleted) {
    const auto added =
        Add("\"it's nightly\" " + kDaily + " --start 2099-05-01 --email me@example.org --count 2");
    EXPECT_EQ(added.status, 0) << added.error;
    EXPECT_EQ(added.out,
              "Schedule id:1 5/3/2099 6:00:00 AM\nSchedule id:2 5/4/2099 6:00:00 AM\nSchedule(s) added\n");
    ASSERT_EQ(Add("once --on 2020-01-01T06:00 --tel 1 --address here").out,
              "Schedule id:3 1/1/2020 6:00:00 AM\nSchedule(s) added\n");

    EXPECT_EQ(Listed()[0]["name"], "it's nightly");
    EXPECT_EQ(Listed()[0]["nextschedule"], "5/3/2099 6:00:00 AM");
    EXPECT_EQ(Listed()[0]["idmsreport"], report);
    EXPECT_EQ(Listed()[0]["fax"], nullptr);
    EXPECT_EQ(Listed("--due").size(), 1u);
    EXPECT_EQ(Listed("--processed").size(), 0u);
    EXPECT_THAT(Schedule("list").out,
                HasSubstr("     3  1/1/2020 6:00:00 AM    NO   once  " + report + "\n"));

    EXPECT_EQ(Schedule("update 3 --processed yes --name renamed --next 2020-02-01").out,
              "Schedule Updated\n");
    const auto shown = nlohmann::json::parse(Schedule("show 3 --json").out);
    EXPECT_EQ(shown["name"], "renamed");
    EXPECT_EQ(shown["nextschedule"], "2/1/2020");
    EXPECT_EQ(shown["processed"], true);
    EXPECT_EQ(shown["address"], "here");
    EXPECT_EQ(shown["email"], " ");
    EXPECT_THAT(Schedule("show 3").out, HasSubstr("processed     YES\n"));
    EXPECT_EQ(Listed("--due").size(), 0u);
    EXPECT_EQ(Schedule("again 3").out, "Schedule id:3 runs again.\n");
    EXPECT_EQ(Listed("--due").size(), 1u);

    const auto deleted = Schedule("delete 1 7 2");
    EXPECT_EQ(deleted.status, 1);
    EXPECT_EQ(deleted.out, "Schedule id:1 deleted.\nSchedule id:2 deleted.\n");
    EXPECT_EQ(deleted.error, "norvelis-cli: there is no schedule 7\n");
    EXPECT_EQ(Listed().size(), 1u);
    for (const char* command : {"show 1", "update 1 --name x", "again 1", "show 99999999999"})
        EXPECT_EQ(Schedule(command).status, 1) << command;
}

TEST_F(ScheduleCommands, WhatIsMissingIsAskedForAndNothingIsBooked) {
    const struct {
        std::string arguments, words;
    } cases[] = {
        {"'' --tel 1 --report " + report, "Name required"},
        {"x --tel 1 --report ''", "Report Name required"},
        {"x --report " + report, "Must Enter TEL or Email"},
        {"x --tel ' ' --email '' --report " + report, "Must Enter TEL or Email"},
        {"x --tel 1 --report " + program.Path("none"), "Invalid IDMS Report File. Action terminated"},
        {"x --tel 1 --report " + program.App(), "Invalid IDMS Report File. Action terminated"},
    };
    for (const auto& c : cases) {
        const auto result = Schedule("add " + c.arguments + " " + kDaily);
        EXPECT_EQ(result.status, 1) << c.arguments;
        EXPECT_EQ(result.error, "norvelis-cli: " + c.words + "\n") << c.arguments;
    }
    const auto dry = Add("x --tel 1 --dry-run --count 1 --start 2099-01-01 " + kDaily);
    EXPECT_EQ(dry.out, "1/3/2099 6:00:00 AM\n");
    const auto none = Add("x --tel 1 --count 0 --start 2099-01-01 " + kDaily);
    EXPECT_EQ(none.out, "Schedule(s) added\n");
    EXPECT_EQ(none.error,
              "Note: The next date, Friday 1/2/2099 6:00:00 AM, is not booked.\n"
              "Note: Nothing is booked: the number of dates is 0.\n");
    EXPECT_THAT(Listed(), IsEmpty());
}

TEST_F(ScheduleCommands, AStoreThatRefusesIsNamedAndKeepsItsRows) {
    ASSERT_EQ(Add("x --tel 1 --count 1 " + kDaily).status, 0);
    const auto other = Connection::Open(ConnectionString(program.StorePath()));
    other->Execute("BEGIN EXCLUSIVE");
    for (const std::string& command :
         {std::string("list"), std::string("delete 1"), std::string("update 1 --name y")}) {
        const auto result = Schedule(command);
        EXPECT_EQ(result.status, 1) << command;
        EXPECT_THAT(result.error, HasSubstr("locked by another program")) << command;
    }
    other->Execute("ROLLBACK");
    chmod(program.StorePath().c_str(), 0444);
    const std::string ordinary = geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups " : "";
    const auto refused = Schedule("add x --tel 1 --count 2 " + kDaily + " --report " + report, ordinary);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.error, HasSubstr("write-protected; 0 of 2 dates are booked"));
    EXPECT_EQ(Listed().size(), 1u);
}

}  // namespace
}  // namespace norvelis
