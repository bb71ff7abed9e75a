#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/program.h"

namespace norvelis {
namespace {

using nlohmann::json;

/// Parts of a simulation: a row that is due from the start and runs for some seconds.
std::string Row(int id, const std::string& outcome = "ok", int seconds = 10,
                const std::string& report = "/r/empschm.txt",
                const std::string& next = "11/24/2026 7:00:00 AM") {
    return json{{"scheduleid", id},   {"nextschedule", next}, {"idmsreport", report},
                {"processed", false}, {"outcome", outcome},   {"seconds", seconds}}
        .dump();
}

struct Case {
    const char* what;
    std::string rows, events;
    int until;
    std::string runs;  ///< "tick at id result", one after the other.
    std::string done;  ///< The processed rows.
    int pollTicks;
};

class Simulate : public testing::Test {
  protected:
    Program::Result Play(const std::string& input) const {
        WriteFile(program.Path("input"), input);
        return program.Run("schedule simulate " + program.Path("input"));
    }
    const Program program;
};

TEST_F(Simulate, RunsRowsAtTheTicksOfTheEngine) {
    const Case cases[] = {
        {"the first poll is the 17th tick; what falls into a run is lost, then 15 ticks rest",
         Row(1) + "," + Row(2), R"([0,"start"])", 300, "17 102 1 ok 33 204 2 ok", "1 2", 16},
        {"the last second of a run is part of it", Row(1, "ok", 12) + "," + Row(2), R"([0,"start"])", 215,
         "17 102 1 ok 33 210 2 ok", "1 2", 1},
        {"a moment is due when it has passed", Row(1, "ok", 0, "/r/x.txt", "11/24/2026 8:01:42 AM"),
         R"([0,"start"])", 108, "18 108 1 ok", "1", 1},
        {"a report that is no report is marked as run", Row(1, "invalid") + "," + Row(2, "missing"),
         R"([0,"start"])", 204, "17 102 1 invalid 33 204 2 missing", "1 2", 1},
        {"a failure stops the engine, which polls at once when it is started again",
         Row(1, "failure", 7) + "," + Row(2), R"([0,"start"],[150,"delete",1],[200,"start"])", 400,
         "17 102 1 failure 18 206 2 ok", "2", 16},
        {"a path without three characters fails behind its run", Row(1, "ok", 5, " ab "), R"([0,"start"])",
         400, "17 102 1 failure", "", 16},
        {"a row without a report keeps those behind it waiting", Row(1, "ok", 5, "  ") + "," + Row(2),
         R"([0,"start"])", 300, "", "", 2},
        {"commands within a run: it ends, the timer counts from the new start",
         Row(1, "ok", 20) + "," + Row(2), R"([0,"start"],[104,"stop"],[105,"stop"],[113,"start"])", 220,
         "17 102 1 ok 33 215 2 ok", "1 2", 1},
        {"stopped before the tick of the same second", Row(1), R"([0,"start"],[102,"stop"])", 500, "", "",
         16},
        {"the clock is set; rows come, go and come back", Row(1, "ok", 0, "/r/x.txt", "11/25/2026"),
         R"([0,"start"],[101,"clock","11/25/2026 12:00:01 AM"],[104,"unprocess",1],[110,"add",)" + Row(7) +
             R"(],[200,"unprocess",1],[250,"delete",7],[300,"unprocess",1],[400,"unprocess",1])",
         500, "17 102 1 ok 33 198 1 ok 49 294 1 ok 65 390 1 ok 81 486 1 ok", "1", 3},
    };
    for (const Case& each : cases) {
        const auto result = Play(R"({"start":"11/24/2026 8:00:00 AM","until":)" + std::to_string(each.until) +
                                 R"(,"rows":[)" + each.rows + R"(],"events":[)" + each.events + "]}");
        ASSERT_EQ(result.status, 0) << each.what << result.error;
        const json out = json::parse(result.out);
        std::string runs, done;
        const auto add = [](std::string& list, const std::string& part) {
            list += (list.empty() ? "" : " ") + part;
        };
        for (const json& run : out["runs"]) {
            for (const char* field : {"tick", "at", "scheduleid"}) add(runs, run[field].dump());
            add(runs, run["result"].get<std::string>());
        }
        for (const json& row : out["rows"]) {
            if (row["processed"] == true) add(done, row["scheduleid"].dump());
            EXPECT_EQ(row["visiofile"].is_string(), row["processed"] == true) << each.what;
        }
        EXPECT_EQ(runs, each.runs) << each.what;
        EXPECT_EQ(done, each.done) << each.what;
        EXPECT_EQ(out["PollTicks"], each.pollTicks) << each.what;
    }
}

TEST_F(Simulate, RefusesWhatIsNoSimulation) {
    const std::string head = R"({"start":"1/1/2026","until":10,"rows":[)";
    for (const std::string& input :
         {std::string("{"), std::string("[]"), head + "{}],\"events\":[]}",
          head + Row(1, "maybe") + "],\"events\":[]}", head + "],\"events\":[[1,\"jump\",2]]}",
          head + "],\"events\":[[-1,\"start\"]]}"}) {
        const auto result = Play(input);
        EXPECT_EQ(result.status, 1) << input;
        EXPECT_THAT(result.error, testing::HasSubstr("the simulation cannot be read")) << input;
    }
}

}  // namespace
}  // namespace norvelis
