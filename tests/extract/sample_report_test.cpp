#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "base/paths.h"
#include "testing/literal_extraction.h"

// The sample report is edited by hand: whoever moves a column there should hear of it.
namespace norvelis {
namespace {

class SampleReport : public testing::Test {
  protected:
    SampleReport()
        : lines(literal::SplitLines(ReadFile(NORVELIS_SOURCE "/app/reportfiles/empschm.text"))),
          failure(literal::ExtractReport(lines, dictionary)) {}

    const literal::Row& Find(const literal::Table& table, const std::string& column,
                             const std::string& value) {
        const auto found =
            std::ranges::find_if(table, [&](const auto& row) { return row.Bytes(column) == value; });
        if (found == table.end()) throw std::runtime_error("no row with " + column + " " + value);
        return *found;
    }

    literal::Dictionary dictionary;
    const std::vector<std::string> lines;
    const int failure;
};

TEST_F(SampleReport, IsReadWhole) {
    EXPECT_TRUE(literal::ValidateReport(lines));
    EXPECT_EQ(failure, 0);
    const literal::Row& schema = Find(dictionary.schema_details, "schemaname", "EMPSCHM");
    EXPECT_EQ(schema.Bytes("schemarelease"), "RELEASE 19.0.04");
    EXPECT_EQ(schema.Bytes("schemaversion"), "1");
    EXPECT_EQ(schema.Bytes("schemadate"), "03/14/24");
    EXPECT_EQ(dictionary.Record_Details.size(), 14u);
    EXPECT_EQ(dictionary.Parents.size(), 9u);
    EXPECT_EQ(dictionary.Connection_Details.size(), 14u);
    EXPECT_EQ(dictionary.Index_Details.size(), 5u);
    for (const std::string& line : lines) EXPECT_LE(line.size(), 132u) << line;
}

TEST_F(SampleReport, EveryRecordAndFieldIsComplete) {
    for (const literal::Row& row : dictionary.Record_Details) {
        for (const char* column : {"areaname", "tableid", "rectype", "reclen", "Information"}) {
            EXPECT_NE(row.Bytes(column), "") << row.Bytes("Recordname") << ' ' << column;
        }
    }
    for (const literal::Row& row : dictionary.Record_layout) {
        const bool group = row.Bytes("fieldusage").starts_with("GROUP");
        EXPECT_NE(row.Bytes("fieldname"), "");
        EXPECT_EQ(row.Bytes("fieldpicture").empty(), group) << row.Bytes("fieldname");
        EXPECT_EQ(row.Bytes("fieldend").empty(), group) << row.Bytes("fieldname");
    }
}

TEST_F(SampleReport, ShowsWhatSchemasHold) {
    // Two sets between one pair, an owner with two members, a member with two owners, a set of two members.
    EXPECT_EQ(Find(dictionary.Record_Details, "Recordname", "WORKSHOP").Bytes("next_step"), "MAKER");
    EXPECT_EQ(Find(dictionary.Connection_Details, "set", "SHOP-MASTERS").Bytes("connection"),
              "NP               \r\nOM NEXT");
    EXPECT_EQ(Find(dictionary.Record_Details, "Recordname", "MATERIAL").Bytes("next_step"),
              "RECIPE-LINE,OFFER");
    EXPECT_EQ(Find(dictionary.Record_Details, "Recordname", "MODEL").Bytes("next_step"),
              "RECIPE-LINE,INSTRUMENT");
    EXPECT_EQ(Find(dictionary.Record_Details, "Recordname", "INSTRUMENT").Bytes("next_step"),
              "BUILD-STEP,REPAIR");

    const literal::Row& commission = Find(dictionary.Record_Details, "Recordname", "COMMISSION");
    EXPECT_EQ(commission.Bytes("Index1"), "COMM-DUE-IX");
    EXPECT_EQ(commission.Bytes("Index2"), "COMM-WORTH-IX");
    const literal::Row& due = Find(dictionary.Index_Details, "Recordname", "COMM-DUE-IX");
    EXPECT_EQ(due.Bytes("sortkey1") + due.Bytes("sortorder1"), "COMM-DUE-0305ASC");
    EXPECT_EQ(due.Bytes("sortkey2") + due.Bytes("sortorder2"), "COMM-AGREED-PRICE-0305DSC");
    EXPECT_EQ(due.Bytes("sortoption"), "OA SORTED DL");
}

}  // namespace
}  // namespace norvelis
