#include "browse/record_details.h"

#include <gmock/gmock.h>

#include "testing/schema_rows.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using Item = std::array<std::string, 2>;
using Field = std::array<std::string, 6>;

class RecordDetailsTest : public ::testing::Test {
  protected:
    void AddField(std::string_view level, std::string_view name, std::string_view picture,
                  std::string_view usage) {
        store->Execute(
            "Insert into Record_layout (schemaname, Recordname, Fieldlevel, fieldname, fieldpicture, "
            "fieldusage) values "
            "('EMPSCHM', 'EMPLOYEE', ?, ?, ?, ?)",
            {level, name, picture, usage});
    }

    TestApp test;
    Connection* store = test.app.gConnection.get();
};

TEST_F(RecordDetailsTest, ItemsWithoutAnIndexKeepTheirHeadings) {
    SchemaRows(*store).Record("EMPLOYEE");
    store->Execute("Update Record_Details set reckey = null");
    const RecordDetails isolate = getinfo(*store, "EMPLOYEE");
    EXPECT_EQ(isolate.currentRecord, "CURRENT RECORD: EMPLOYEE");
    EXPECT_THAT(isolate.items,
                ElementsAre(Item{"RECORD NAME", " EMPLOYEE"}, Item{"TABLE ID", " 415"},
                            Item{"RECORD MODE", " CALC"}, Item{"RECORD KEY", "  "}, Item{"RECORD TYPE", " F"},
                            Item{"RECORD LENGTH", " 116"}, Item{"", ""}, Item{"INDEX(S)", ""}));
    EXPECT_THAT(getinfo2(*store, "EMPLOYEE").items,
                ElementsAre(Item{"ID", " 415"}, Item{"MODE", " CALC"}, Item{"KEY", "  "}, Item{"TYPE", " F"},
                            Item{"LEN", " 116"}, Item{"SORT", ""}, Item{"IDX", ""}));
}

TEST_F(RecordDetailsTest, SortKeysKeepTheirRowsAndFourIndexesAreShown) {
    SchemaRows rows(*store);
    rows.Record("EMPLOYEE");
    rows.Index("EMP-NAME-NDX", "EMPLOYEE", "EMP-LAST-NAME", "ASC");
    store->Execute("Update Index_Details set sortkey3 = 'EMP-ID', sortorder3 = 'DSC', sortcalckey = 'KEYS'");
    store->Execute("Update Record_Details set Index1 = 'I1', Index3 = 'I3', Index4 = 'I4', Index5 = 'I5'");
    const auto items = getinfo(*store, "EMPLOYEE ").items;
    EXPECT_THAT(std::vector(items.begin() + 6, items.end()),
                ElementsAre(Item{"KEYS", " EMP-LAST-NAME ASC"}, Item{"", ""}, Item{"", " EMP-ID DSC"},
                            Item{"INDEX(S)", " I1"}, Item{"", " I3"}, Item{"", " I4"}));
}

TEST_F(RecordDetailsTest, FieldsShowTheirUsageAndHowOftenTheyOccur) {
    SchemaRows(*store).Record("EMPLOYEE");
    AddField("02", "EMP-NAME", "X(25)", "DISPLAY");
    AddField("03", "EMP-PHONE", "9(10)", "DISPLAY OCCURS 12");
    const auto layout = getinfo(*store, "EMPLOYEE").layout;
    ASSERT_EQ(layout.size(), 30u);
    EXPECT_EQ(layout[0], (Field{" 02", " EMP-NAME", " X(25)", " DISPLAY", "", ""}));
    EXPECT_EQ(layout[1], (Field{" 03", " EMP-PHONE", " 9(10)", " DISPLAY OCCU", " YES", " 12"}));
    EXPECT_EQ(layout[2], (Field{" ", " ", " ", " ", " ", " "}));

    for (int i = 0; i < 40; ++i) AddField("05", "F", "X", "DISPLAY");
    EXPECT_EQ(getinfo(*store, "EMPLOYEE").layout.size(), 42u);
}

TEST_F(RecordDetailsTest, NothingKnownAndNothingReadableShowEmptyGrids) {
    const RecordDetails unknown = getinfo(*store, "NOBODY");
    EXPECT_EQ(unknown.currentRecord, "");
    EXPECT_TRUE(unknown.items.empty());
    EXPECT_EQ(unknown.layout.size(), 30u);

    store->Close();
    EXPECT_EQ(getinfo2(*store, "NOBODY").layout.size(), 30u);
    EXPECT_EQ(ReadRecordLabels(*store, "", "NOBODY"), std::nullopt);
}

TEST_F(RecordDetailsTest, ToolTips) {
    SchemaRows(*store, "OTHER").Record("employee");
    SchemaRows(*store).Record("Employee");
    store->Execute("Update Record_Details set areaname = null, tableid = '7' where schemaname = 'EMPSCHM'");
    const auto labels = ReadRecordLabels(*store, "EMPSCHM ", "employee");
    ASSERT_TRUE(labels);
    EXPECT_EQ(labels->lblRecordname, "EMPLOYEE");
    EXPECT_EQ(labels->lblareaname, " ");
    EXPECT_EQ(labels->lbltableid, "7");
    EXPECT_EQ(labels->lbldn, "F");
    EXPECT_EQ(labels->lblDN2, "DN");
    EXPECT_EQ(ReadRecordLabels(*store, "", "EMPLOYEE")->lbltableid, "415");

    EXPECT_EQ(ReadSchemaLabels(*store, "EMPSCHM"), std::nullopt);
    store->Execute("Insert into schema_details values ('EMPSCHM', ' 18.5', '100', '01/02/26')");
    const auto schema = ReadSchemaLabels(*store, "EMPSCHM");
    ASSERT_TRUE(schema);
    EXPECT_EQ(schema->lblRecordname, "Schema Name: EMPSCHM");
    EXPECT_EQ(schema->lblSchemaRelease, "Release: 18.5");
    EXPECT_EQ(schema->lblschemaVersion, "Schema Version: 100");
    EXPECT_EQ(schema->lblschemadate, "Schema date: 01/02/26");
}

}  // namespace
}  // namespace norvelis
