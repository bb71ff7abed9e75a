#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dictionary/records.h"
#include "dictionary/schema_contents.h"
#include "dictionary/schemas.h"
#include "dictionary/sets.h"
#include "store/temporary_store.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> Column(Recordset rows, std::string_view column) {
    std::vector<std::string> values;
    for (; !rows.Eof(); rows.MoveNext()) values.push_back(rows.Text(column));
    return values;
}

/// Two schemas that share a record's name, the later one first by name.
class DictionaryReadingTest : public ::testing::Test {
  protected:
    DictionaryReadingTest() {
        {
            SchemaRows rows(store, "SECOND");
            rows.Entry("OFFICE", "EMPLOYEE");
            rows.Entry("EMPLOYEE");
            rows.Record("JOB");
            rows.Set("OFF-EMP", "OFFICE", "EMPLOYEE");
            rows.Set("OFF-BOSS", "OFFICE", "BOSS");
        }
        SchemaRows rows(store, "FIRST");
        rows.Entry("Employee", "COVERAGE");
        rows.Index("EMP-NDX", "EMPLOYEE", "EMP-NAME", "ASC");
    }

    TestApp test;
    Connection& store = *test.app.gConnection;
};

TEST_F(DictionaryReadingTest, SchemasAreThoseWithEntryRecords) {
    store.Execute("Insert into schema_details (schemaname, schemarelease) values ('EMPTY', '18.5')");
    EXPECT_THAT(Column(dictionary::Schemas(store), "schemaname"), ElementsAre("SECOND", "FIRST"));
    EXPECT_THAT(Column(dictionary::SchemasByName(store), "schemaname"), ElementsAre("FIRST", "SECOND"));
    EXPECT_THAT(Column(dictionary::SchemaHeader(store, "empty "), "schemarelease"), ElementsAre("18.5"));
    EXPECT_EQ(dictionary::StoredSchemaName(store, "first"), "FIRST");
    EXPECT_EQ(dictionary::StoredSchemaName(store, "EMPTY"), std::nullopt);
}

TEST_F(DictionaryReadingTest, EntryRecordsComeInTheirOrderOrByName) {
    EXPECT_THAT(Column(dictionary::EntryRecords(store, "second"), "Recordname"),
                ElementsAre("OFFICE", "EMPLOYEE"));
    EXPECT_THAT(Column(dictionary::EntryRecordsByName(store, "SECOND"), "Recordname"),
                ElementsAre("EMPLOYEE", "OFFICE"));
    EXPECT_EQ(dictionary::CountEntryRecords(store, "SECOND"), 2);
}

TEST_F(DictionaryReadingTest, ARecordIsFoundByItsNameAndInItsSchema) {
    EXPECT_THAT(Column(dictionary::RecordsNamed(store, "employee"), "schemaname"),
                ElementsAre("SECOND", "FIRST"));
    EXPECT_THAT(Column(dictionary::RecordIn(store, "FIRST", "EMPLOYEE "), "Recordname"),
                ElementsAre("Employee"));
    EXPECT_THAT(Column(dictionary::RecordIn(store, "FIRST", "JOB"), "Recordname"), IsEmpty());
    EXPECT_THAT(Column(dictionary::MemberLists(store), "next_step"),
                ElementsAre("EMPLOYEE", "", "", "COVERAGE"));
}

TEST_F(DictionaryReadingTest, IndexBoxesAreNoRecords) {
    EXPECT_FALSE(dictionary::HasIndexBoxes(store));
    store.Execute(
        "Insert into Record_Details (schemaname, Recordname, recordtype, next_step) "
        "values ('FIRST', 'BOX', 'index', 'EMPLOYEE')");
    EXPECT_TRUE(dictionary::HasIndexBoxes(store));
    EXPECT_THAT(Column(dictionary::IndexBoxesOf(store, "employee"), "Recordname"), ElementsAre("BOX"));
    EXPECT_THAT(Column(dictionary::RecordsNamed(store, "BOX"), "Recordname"), IsEmpty());
    EXPECT_EQ(dictionary::MemberLists(store).RecordCount(), 4u);
}

TEST_F(DictionaryReadingTest, SetsComeByOwnerAndMember) {
    SchemaRows(store, "FIRST").Set("A-SET", "ALPHA", "BETA");
    EXPECT_THAT(Column(dictionary::Sets(store), "set"), ElementsAre("A-SET", "OFF-BOSS", "OFF-EMP"));
    EXPECT_THAT(Column(dictionary::IndexesOf(store, "Employee"), "sortkey1"), ElementsAre("EMP-NAME"));
    EXPECT_EQ(dictionary::Indexes(store).RecordCount(), 1u);
}

TEST_F(DictionaryReadingTest, ASchemaIsReadWholeWithoutTheRowsOfOthers) {
    const auto field = [&](const char* schema, const char* record, const char* name) {
        store.Execute(
            "Insert into Record_layout (schemaname, Recordname, Fieldlevel, fieldname, fieldpicture) values "
            "(?, ?, '02', ?, 'X(4)       1')",
            {schema, record, name});
    };
    field("SECOND", "employee ", "EMP-ID-0415");
    field("FIRST", "EMPLOYEE", "EMP-CODE-0415");
    field("SECOND", "NOWHERE", "LOST-0999");
    field("SECOND", "EMPLOYEE", "EMP-NAME-0415");
    store.Execute("Insert into schema_details (schemaname, schemaversion) values ('SECOND', '2')");

    const auto second = dictionary::ReadSchema(store, "second");
    EXPECT_EQ(second.name, "SECOND");
    EXPECT_EQ(second.version, "2");
    EXPECT_THAT(second.entryRecords, ElementsAre("OFFICE", "EMPLOYEE"));
    ASSERT_EQ(second.records.size(), 3u);
    EXPECT_EQ(second.records[2].name, "JOB");
    ASSERT_EQ(second.records[1].fields.size(), 2u);
    EXPECT_EQ(second.records[1].fields[0].name, "EMP-ID-0415");
    EXPECT_EQ(second.records[1].fields[1].picture, "X(4)       1");
    ASSERT_EQ(second.sets.size(), 2u);
    EXPECT_EQ(second.sets[1].name + second.sets[1].owner + second.sets[1].member, "OFF-BOSSOFFICEBOSS");
    EXPECT_THAT(second.indexes, IsEmpty());

    const auto first = dictionary::ReadSchema(store, "FIRST");
    ASSERT_EQ(first.indexes.size(), 1u);
    EXPECT_THAT(first.indexes[0].keys, ElementsAre(std::pair<std::string, std::string>("EMP-NAME", "ASC")));

    const TemporaryStore other;
    for (const auto& schema : {first, second}) {
        dictionary::WriteSchema(*other, schema);
        EXPECT_TRUE(dictionary::ReadSchema(*other, schema.name) == schema) << schema.name;
    }
    EXPECT_THAT(Column(dictionary::RecordIn(*other, "SECOND", "OFFICE"), "next_step"),
                ElementsAre("EMPLOYEE,BOSS"));
}

}  // namespace
}  // namespace norvelis
