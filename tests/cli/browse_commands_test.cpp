#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/program.h"
#include "testing/schema_rows.h"

namespace norvelis {
namespace {

class BrowseCommandsTest : public ::testing::Test {
  protected:
    BrowseCommandsTest() {
        const auto store = Connection::Open(ConnectionString(program.App() + "/Database/records.mdb"));
        SchemaRows(*store, "OTHER").Entry("JOB");
        SchemaRows rows(*store);
        rows.Entry("OFFICE", "EMPLOYEE");
        rows.Entry("DEPARTMENT", "EMPLOYEE");
        rows.Record("EMPLOYEE", "COVERAGE");
        rows.Record("COVERAGE");
    }

    const Program program;
};

TEST_F(BrowseCommandsTest, TheTreeWholeInPartAndAsJson) {
    EXPECT_EQ(program.Run("tree empschm").out,
              "EMPSCHM\n"
              "  DEPARTMENT\n"
              "    EMPLOYEE\n"
              "      COVERAGE\n"
              "  OFFICE\n"
              "    EMPLOYEE\n"
              "      COVERAGE\n");
    EXPECT_EQ(program.Run("tree --depth 2").out, "EMPSCHM\n  DEPARTMENT\n  OFFICE\nOTHER\n  JOB\n");
    const auto json = nlohmann::json::parse(program.Run("tree EMPSCHM --json").out);
    ASSERT_EQ(json.size(), 7u);
    EXPECT_EQ(json[3]["text"], "COVERAGE");
    EXPECT_EQ(json[3]["level"], 4);
    EXPECT_EQ(json[3]["schema"], "EMPSCHM");
    EXPECT_EQ(json[3]["key"].get<std::string>().substr(0, 9), "EMPSCHM**");
    EXPECT_EQ(program.Run("tree NONE").status, 1);
}

TEST_F(BrowseCommandsTest, FindShowsEveryPlaceOfAName) {
    EXPECT_EQ(program.Run("find cover").out,
              "EMPSCHM > DEPARTMENT > EMPLOYEE > COVERAGE\n"
              "EMPSCHM > OFFICE > EMPLOYEE > COVERAGE\n");
    EXPECT_EQ(nlohmann::json::parse(program.Run("find EMP --json").out).size(), 3u);
    const auto none = program.Run("find nothing");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_EQ(none.error, "norvelis-cli: End of search for record: NOTHING\n");
}

}  // namespace
}  // namespace norvelis
