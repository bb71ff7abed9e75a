#include "browse/record_list.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "base/paths.h"
#include "testing/literal_record_list.h"
#include "testing/odd_dictionary.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> NamesOf(const std::vector<Neighbor>& neighbors) {
    std::vector<std::string> names;
    for (const auto& neighbor : neighbors) names.push_back(neighbor.name);
    return names;
}

std::map<std::string, std::string> LabelsOf(const std::optional<RecordLabels>& labels) {
    if (!labels) return {};
    return {{"lblRecordname", labels->lblRecordname},
            {"lblareaname", labels->lblareaname},
            {"lbltableid", labels->lbltableid},
            {"lblrecmode", labels->lblrecmode},
            {"lblreckey", labels->lblreckey},
            {"lblreclen", labels->lblreclen},
            {"lbldn", labels->lbldn},
            {"lblDN2", labels->lblDN2}};
}

class RecordListTest : public ::testing::Test {
  protected:
    void ExpectTheLiteralScreen(const literal::Dictionary& tables, std::string_view name) {
        literal::ListScreen screen;
        literal::ShowRecord(screen, tables, name);
        const ChosenRecord chosen = ShowRecord(store, name);
        ASSERT_EQ(NamesOf(chosen.owners), screen.FromList) << name;
        ASSERT_EQ(NamesOf(chosen.members), screen.ToList) << name;
        ASSERT_EQ(LabelsOf(chosen.record.labels), screen.labels) << name;
        ASSERT_EQ(chosen.record.details.items, screen.FlxGrid4) << name;
        ASSERT_EQ(chosen.record.details.layout, screen.flxgrid5) << name;
        ASSERT_EQ(getinfo2(store, name).items, screen.FlxGrid4) << name;
    }

    TestApp test;
    Connection& store = *test.app.gConnection;
};

TEST_F(RecordListTest, OddDictionariesShowWhatTheLiteralScreenShows) {
    const char* wanted = std::getenv("NORVELIS_ODD_DICTIONARIES");
    const std::uint64_t end = wanted == nullptr ? 150 : std::strtoull(wanted, nullptr, 10);
    for (std::uint64_t seed = 0; seed < end; ++seed) {
        SCOPED_TRACE("odd dictionary of seed " + std::to_string(seed));
        const literal::Dictionary tables = GenerateOddDictionary(seed);
        WriteDictionary(store, tables);
        literal::ListScreen screen;
        literal::LoadSchemaList(screen, tables);
        ASSERT_EQ(LoadSchemaList(test.app), screen.FlxGrid0);
        for (const auto& schema : screen.FlxGrid0) {
            literal::LoadRecordsList(screen, tables, schema);
            ASSERT_EQ(LoadRecordsList(store, schema), screen.FlxGrid3);
        }
        for (const char* name : {"REC-0", "rec-1", "REC-2  ", "  Rec-0 ", "REC-3", "", "REC-99"}) {
            ExpectTheLiteralScreen(tables, name);
            if (HasFatalFailure()) return;
        }
    }
}

TEST_F(RecordListTest, TenNamesAreListedOnceAndTheRepeatsOfOthersAgain) {
    std::vector<std::string> listed;
    {
        SchemaRows rows(store);
        rows.Record("MEMBER");
        for (char owner = 'A'; owner <= 'L'; ++owner) {
            const std::string name(1, owner);
            for (const char* set : {"S-1", "S-2"}) rows.Set(set, name, "MEMBER");
            listed.insert(listed.end(), owner > 'J' ? 2 : 1, name);
        }
    }
    EXPECT_EQ(NamesOf(ShowRecord(store, "MEMBER").owners), listed);
}

TEST_F(RecordListTest, NeighborsHaveTheirSetsAndTheMarkOfOtherSchemas) {
    {
        SchemaRows rows(store);
        rows.Record("EMPLOYEE");
        rows.Set("DEPT-EMPLOYEE", "DEPARTMENT", "EMPLOYEE");
        rows.Set("DEPT-MANAGER", "DEPARTMENT", "EMPLOYEE");
        rows.Set("EMP-COVERAGE", "EMPLOYEE", "COVERAGE");
    }
    {
        SchemaRows others(store, "OTHER");
        for (const char* set : {"DEPT-MANAGER", "DEPT-STAFF"}) others.Set(set, "DEPARTMENT", "EMPLOYEE");
        others.Set("SITE-EMPLOYEE", "SITE", "EMPLOYEE");
    }
    const auto owners = ShowRecord(store, "employee", "empschm").owners;
    ASSERT_THAT(NamesOf(owners), ElementsAre("DEPARTMENT", "SITE"));
    EXPECT_THAT(owners[0].sets, ElementsAre("DEPT-EMPLOYEE", "DEPT-MANAGER", "DEPT-STAFF"));
    EXPECT_EQ(owners[0].otherSchema, "");
    EXPECT_THAT(owners[1].sets, ElementsAre("SITE-EMPLOYEE"));
    EXPECT_EQ(owners[1].otherSchema, "OTHER");
    EXPECT_EQ(ShowRecord(store, "EMPLOYEE", "OTHER").owners[0].otherSchema, "")
        << "one of three sets is OTHER's";
    EXPECT_EQ(ShowRecord(store, "EMPLOYEE").owners[1].otherSchema, "") << "no schema, no mark";
    const auto coverage = ShowRecord(store, "COVERAGE", "EMPSCHM");
    EXPECT_THAT(NamesOf(coverage.owners), ElementsAre("EMPLOYEE"));
    EXPECT_THAT(coverage.members, IsEmpty());
}

TEST_F(RecordListTest, AMissingStoreAndAnEmptyOne) {
    EXPECT_THAT(LoadSchemaList(test.app), IsEmpty());
    EXPECT_THAT(test.host.messages, IsEmpty());
    store.Close();
    DeleteFile(test.StorePath());
    EXPECT_THAT(LoadSchemaList(test.app), IsEmpty());
    EXPECT_THAT(test.host.Texts(), ElementsAre("Please locate and extract IDMS Report File."));
}

TEST(RecordTrail, GoesBackThroughTheLastHundred) {
    RecordTrail trail;
    EXPECT_FALSE(trail.CanGoBack());
    for (const char* name : {"A", "B", "b ", "C"}) trail.Choose(name);
    EXPECT_EQ(trail.Back(), "B");
    EXPECT_EQ(trail.Back(), "A");
    EXPECT_FALSE(trail.CanGoBack());
    for (int i = 0; i < 250; ++i) trail.Choose(std::to_string(i));
    int steps = 0;
    std::string last;
    for (; trail.CanGoBack(); ++steps) last = trail.Back();
    EXPECT_EQ(steps, 100);
    EXPECT_EQ(last, "149");
}

}  // namespace
}  // namespace norvelis
