#include <gtest/gtest.h>

#include "dictionary/clearing.h"
#include "dictionary/table_rows.h"
#include "dictionary/writer.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

class DictionaryWritingTest : public ::testing::Test {
  protected:
    TestApp test;
    Connection& store = *test.app.gConnection;

    /// One row in every table.
    dictionary::Counts Write(std::string_view schema) {
        dictionary::Writer writer(store, schema);
        writer.AddSchema("R18.5 ", "1", "11/24/26");
        writer.AddParent("EMP");
        writer.AddRecord("EMP", "CALC", "DN");
        writer.AddField("EMP", {"02", "KEY", "DISPLAY", "X(4)", "1", "4"});
        writer.AddConnection("EMP", "JOB", "EMP-JOB", "NPO");
        writer.IndexOf("NDX", "EMP").keys.push_back({3, "KEY", "ASC"});
        writer.Finish();
        return writer.CountRows();
    }
    /// How many rows each table has, in the tables' order.
    std::string RowCounts(const std::optional<std::string>& schema = std::nullopt) {
        std::string counts;
        for (const TableDefinition& table : DictionaryTables())
            counts += std::to_string(dictionary::RowsOf(store, table, schema).RecordCount());
        return counts;
    }
};

TEST_F(DictionaryWritingTest, ClearingASchemaLeavesTheOthersAndClearingAllTheHeaders) {
    Write("ONE");
    Write("TWO");
    EXPECT_EQ(RowCounts(), "222222");
    dictionary::ClearSchema(store, "one ");
    EXPECT_EQ(RowCounts("ONE"), "000000");
    EXPECT_EQ(RowCounts("TWO"), "111111");
    dictionary::ClearAll(store);
    EXPECT_EQ(RowCounts(), "100000");
}

TEST_F(DictionaryWritingTest, RowsAreCountedForTheirSchemaAlone) {
    Write("ONE");
    const dictionary::Counts counts = Write("TWO");
    EXPECT_EQ(counts.records, 1u);
    EXPECT_EQ(counts.fields, 1u);
    EXPECT_EQ(counts.sets, 1u);
    EXPECT_EQ(counts.indexes, 1u);
}

TEST_F(DictionaryWritingTest, ANameIsOneNameInAnyLetterCase) {
    dictionary::Writer writer(store, " S ");
    for (const char* name : {"EMP", "emp ", "", "  "}) {
        writer.AddParent(name);
        writer.AddRecord(name, "CALC", "");
    }
    EXPECT_EQ(writer.AddConnection("EMP", "JOB", "A", ""), 1u);
    EXPECT_EQ(writer.AddConnection("emp", "JOB ", "a", ""), 1u) << "the same set again";
    EXPECT_EQ(writer.AddConnection("EMP", "JOB", "B", ""), 2u);
    writer.IndexOf("NDX", "EMP");
    writer.IndexOf("ndx", "EMP");
    writer.Finish();
    EXPECT_EQ(RowCounts("S"), "011021");
    EXPECT_EQ(store.Select("Select * FROM Index_Details").Text("Recordname"), "ndx")
        << "the spelling of the last to ask";
}

TEST_F(DictionaryWritingTest, WhatIsNotKnownYetIsNull) {
    Write("S");
    const Recordset record = store.Select("Select * FROM Record_Details");
    EXPECT_EQ(record.Value("Recmode"), "CALC");
    EXPECT_EQ(record.Value("areaname"), std::nullopt) << "no section was read";
    EXPECT_EQ(record.Value("next_step"), std::nullopt) << "its sets were not read";
    const Recordset index = store.Select("Select * FROM Index_Details");
    EXPECT_EQ(index.Value("sortkey2"), std::nullopt);
    EXPECT_EQ(index.Value("sortkey3"), "KEY");
    EXPECT_EQ(index.Value("sortorder3"), "ASC");
}

}  // namespace
}  // namespace norvelis
