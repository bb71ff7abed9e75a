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

TEST_F(BrowseCommandsTest, FindListsNamesOfAnyKind) {
    {
        const auto store = Connection::Open(ConnectionString(program.StorePath()));
        SchemaRows(*store).Set("OFFICE-EMP", "OFFICE", "EMPLOYEE");
        store->Execute(
            "Insert into Record_layout (schemaname, Recordname, fieldname) values ('EMPSCHM', 'COVERAGE', "
            "'EMP-ID')");
    }
    EXPECT_EQ(program.Run("find --in records,sets,fields emp").out,
              "record\tEMPLOYEE\t\tEMPSCHM\n"
              "field\tEMP-ID\tCOVERAGE\tEMPSCHM\n"
              "set\tOFFICE-EMP\tOFFICE > EMPLOYEE\tEMPSCHM\n");
    EXPECT_EQ(program.Run("find id --where-used").out, "field\tEMP-ID\tCOVERAGE\tEMPSCHM\n");
    const auto json = nlohmann::json::parse(program.Run("find 'set:*-emp' --json").out);
    EXPECT_EQ(json, nlohmann::json::parse(R"([{"kind": "set", "name": "OFFICE-EMP", "schema": "EMPSCHM",
                                               "owner": "OFFICE", "member": "EMPLOYEE"}])"));
    EXPECT_EQ(program.Run("find emp --in nonsense").status, 2);
    EXPECT_EQ(program.Run("find emp --in sets --where-used").status, 1);
    const auto none = program.Run("find --in sets nothing");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.error, "norvelis-cli: nothing has the name nothing\n");
}

TEST_F(BrowseCommandsTest, TheListWalksFromSchemasToARecord) {
    {
        const auto store = Connection::Open(ConnectionString(program.StorePath()));
        SchemaRows rows(*store);
        rows.Set("OFFICE-EMPLOYEE", "OFFICE", "EMPLOYEE");
        rows.Set("EMP-COVERAGE", "EMPLOYEE", "COVERAGE");
    }
    EXPECT_EQ(program.Run("list").out, "EMPSCHM\nOTHER\n");
    EXPECT_EQ(program.Run("list --schema empschm").out, "COVERAGE\nDEPARTMENT\nEMPLOYEE\nOFFICE\n");
    EXPECT_EQ(nlohmann::json::parse(program.Run("list --schema OTHER --json").out),
              nlohmann::json::array({"JOB"}));
    EXPECT_EQ(program.Run("list --record employee").out,
              "EMPLOYEE\n415  F  116  CALC\nEMP-ID-0415  DN\nEMP-REGION\n"
              "\nOWNERS\n  OFFICE  (OFFICE-EMPLOYEE)\n"
              "\nMEMBERS\n  COVERAGE  (EMP-COVERAGE)\n"
              "\n  ITEM  VALUE\n  ID    415\n  MODE  CALC\n  KEY   EMP-ID-0415\n  TYPE  F\n  LEN   116\n"
              "  SORT\n  IDX\n"
              "\n  LVL  NAME  PICTURE  USAGE  OCCURS  OCCUR COUNT\n");
    const auto refused = program.Run("list --schema NONE");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.error, "norvelis-cli: there is no schema NONE in the dictionary\n");
    EXPECT_EQ(program.Run("list --schema A --record B").status, 2);
}

TEST_F(BrowseCommandsTest, ARecordAsJsonHasAllThatTheScreensShow) {
    const auto json = nlohmann::json::parse(program.Run("list --record ' EMPLOYEE ' --json").out);
    EXPECT_TRUE(json["details"].empty()) << "the grids know no name that begins with a blank";
    EXPECT_EQ(json["labels"]["lblRecordname"], "EMPLOYEE");
    const auto known = nlohmann::json::parse(program.Run("list --record EMPLOYEE --json").out);
    EXPECT_EQ(known["details"][0], nlohmann::json::array({"ID", " 415"}));
    EXPECT_EQ(known["getinfo"]["Label1"], "CURRENT RECORD: EMPLOYEE");
    EXPECT_EQ(known["getinfo"]["details"][0], nlohmann::json::array({"RECORD NAME", " EMPLOYEE"}));

    const auto result = program.Run("list --record NOBODY --json");
    EXPECT_EQ(result.status, 0);
    const auto unknown = nlohmann::json::parse(result.out);
    EXPECT_TRUE(unknown["owners"].empty() && unknown["members"].empty() && unknown["details"].empty());
    EXPECT_EQ(unknown["labels"].size(), 8u);
    EXPECT_EQ(unknown["labels"]["lblDN2"], "");
    EXPECT_EQ(unknown["getinfo"]["Label1"], "");
    ASSERT_EQ(unknown["layout"].size(), 30u);
    EXPECT_EQ(unknown["layout"][29], nlohmann::json::array({" ", " ", " ", " ", " ", " "}));
}

}  // namespace
}  // namespace norvelis
