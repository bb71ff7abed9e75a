#include "store/recordset.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

class RecordsetTest : public ::testing::Test {
  protected:
    TestApp test;
    Connection& store = *test.app.gConnection;

    void AddRecord(std::string_view schema, std::string_view name) {
        Recordset rows = store.Select("Select * FROM Record_Details");
        rows.AddNew();
        rows.Set("SCHEMANAME", schema);
        rows.Set("recordname", name);
        rows.Update();
    }
};

TEST_F(RecordsetTest, AWalkSeesItsRowsAsTheyAreNowWhileOthersWriteThem) {
    AddRecord("S", "A");
    AddRecord("S", "B");
    Recordset walk = store.Select("Select * FROM Record_Details where schemaname =?", {"s"});
    EXPECT_EQ(walk.Value("areaname"), std::nullopt);
    AddRecord("S", "C");
    Recordset other = store.Select("Select * FROM Record_Details where recordname =?", {"A  "});
    other.Set("areaname", "NORTH");
    other.Update();
    EXPECT_EQ(walk.Text("areaname"), "NORTH");
    walk.Set("next_step", "B");
    walk.Update();
    EXPECT_EQ(walk.Text("areaname"), "NORTH") << "only the column set is written";
    EXPECT_EQ(walk.RecordCount(), 2u) << "opening fixed the rows";
    walk.MoveNext();
    walk.MoveNext();
    EXPECT_TRUE(walk.Eof());
    EXPECT_THROW(walk.Text("areaname"), RuntimeFailure);
}

TEST_F(RecordsetTest, RowsComeInOrderOfInsertionUnlessAsked) {
    for (const char* name : {"M", "A", "Z", "B"}) AddRecord(name == std::string("Z") ? "Y" : "X", name);
    const auto names = [&](const char* statement, const char* column) {
        std::string all;
        for (Recordset rows = store.Select(statement); !rows.Eof(); rows.MoveNext()) all += rows.Text(column);
        return all;
    };
    EXPECT_EQ(names("Select * FROM record_details", "Recordname"), "MAZB");
    EXPECT_EQ(names("Select * FROM record_details order by recordname asc", "Recordname"), "ABMZ");
    EXPECT_EQ(names("Select distinct(schemaname) FROM Record_Details", "schemaname"), "XY");
    EXPECT_EQ(names("Select DISTINCT(schemaname) FROM Record_Details order by schemaname asc", "schemaname"),
              "XY");
}

TEST_F(RecordsetTest, OptionalColumnsReadAsNullAndUnknownOnesAreRefused) {
    AddRecord("S", "A");
    Recordset rows = store.Select("Select * FROM Record_Details");
    EXPECT_EQ(rows.Value("Hyperlink"), std::nullopt);
    EXPECT_EQ(rows.Text("COMMENTS"), "");
    EXPECT_THROW(rows.Value("nonsense"), RuntimeFailure);
    EXPECT_THROW(rows.Set("nonsense", ""), RuntimeFailure);
}

TEST_F(RecordsetTest, ARowDeletedUnderAWalkReadsAsNull) {
    AddRecord("S", "A");
    Recordset rows = store.Select("Select * FROM Record_Details");
    store.Execute("Delete * FROM Record_details where schemaname =?", {"S"});
    EXPECT_EQ(rows.Value("Recordname"), std::nullopt);
    rows.Set("areaname", "x");
    EXPECT_NO_THROW(rows.Update());
    EXPECT_EQ(store.Count("Select count(*) FROM Record_Details"), 0);
}

}  // namespace
}  // namespace norvelis
