#include "compare/comparison.h"

#include <fmt/ranges.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "compare/comparison_text.h"

namespace norvelis::compare {
namespace {

using dictionary::RecordContents;
using dictionary::SchemaContents;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

RecordContents Record(const std::string& name, const std::string& id) {
    RecordContents record;
    record.name = name;
    record.mode = "CALC";
    record.area = "STOCK-AREA";
    record.id = id;
    record.key = "CODE-" + id;
    record.lengthKind = "FIXED";
    record.length = "46";
    record.fields = {{"02", "CODE-" + id, "DISPLAY", "X(8)                         1", "1", "8"},
                     {"02", "NAME-" + id, "DISPLAY", "X(30)                        9", "9", "38"},
                     {"02", "FILLER", "DISPLAY", "X(8)                        39", "39", "46"}};
    return record;
}

/// Three records, a set with two members, an index.
SchemaContents Sample() {
    SchemaContents schema;
    schema.name = "EMPSCHM";
    schema.date = "03/14/24";
    schema.records = {Record("MODEL", "0201"), Record("OFFER", "0220"), Record("REPAIR", "0320")};
    schema.records[1].mode = "VIA";
    schema.records[1].key = "MODEL-OFFERS";
    schema.records[2].area = "SALES-AREA";
    schema.records[2].fields[1].name = "TOOL-0320";
    schema.sets = {{"MODEL-OFFERS", "MODEL", "OFFER", "NPO              \r\nMA ASC NAME DL"},
                   {"MODEL-OFFERS", "MODEL", "REPAIR", "NPO              \r\nMA LAST"}};
    schema.indexes = {{"MODEL-IX", "MODEL", {}, "MA SORTED DL", {{"NAME-0201", "ASC"}}}};
    return schema;
}

std::vector<std::string> Lines(const SchemaContents& former, const SchemaContents& present) {
    std::vector<std::string> lines;
    for (const Row& row : Rows(Compare(former, present)))
        lines.push_back(fmt::format("{}", fmt::join(row, "|")));
    return lines;
}

struct Case {
    const char* about;
    std::function<void(SchemaContents&)> edit;
    std::vector<std::string> lines;
};

const Case kCases[] = {
    {"letters, blanks and positions behind pictures are no differences",
     [](SchemaContents& s) {
         s.records[0].fields[0] = {"02", "code-0201", "Display", "x(8)", "1", "8"};
         s.sets[0].connection = "NPO\r\nMA  ASC NAME DL";
     },
     {}},
    {"the schema's own lines",
     [](SchemaContents& s) { s.date = "11/24/26"; },
     {"schema|changed|EMPSCHM||date|03/14/24|11/24/26"}},
    {"a record with another number: its fields have new names, no set or index is different",
     [](SchemaContents& s) {
         RecordContents& record = s.records[0] = Record("MODEL", "0299");
         s.indexes[0].keys[0].first = record.fields[1].name;
     },
     {"record|changed|MODEL||id|0201|0299", "field|renamed|CODE-0299|MODEL|name|CODE-0201|CODE-0299",
      "field|renamed|NAME-0299|MODEL|name|NAME-0201|NAME-0299"}},
    {"a field under a new name, which index and set follow",
     [](SchemaContents& s) {
         s.records[0].fields[1].name = s.indexes[0].keys[0].first = "TITLE-0201";
         s.records[1].fields[1].name = "TITLE-0220";
         s.sets[0].connection = "NPO\r\nMA ASC TITLE DL";
     },
     {"field|renamed|TITLE-0201|MODEL|name|NAME-0201|TITLE-0201",
      "field|renamed|TITLE-0220|OFFER|name|NAME-0220|TITLE-0220"}},
    {"a set under a new name, which the record in it follows",
     [](SchemaContents& s) {
         s.sets[0].name = s.sets[1].name = "OFFERS-OF-MODEL";
         s.records[1].key = "OFFERS-OF-MODEL";
     },
     {"set|renamed|OFFERS-OF-MODEL|MODEL|name|MODEL-OFFERS|OFFERS-OF-MODEL"}},
    {"a record and an area under new names",
     [](SchemaContents& s) {
         s.records[2].name = s.sets[1].member = "MENDING";
         s.records[2].area = "SERVICE-AREA";
     },
     {"record|renamed|MENDING||name|REPAIR|MENDING",
      "area|renamed|SERVICE-AREA||name|SALES-AREA|SERVICE-AREA"}},
    {"a record that only takes over a number is another",
     [](SchemaContents& s) {
         s.records[2].name = "TRUCK";
         s.records[2].fields = {{"02", "WHEELS-0320", "COMP", "S9(4)", "1", "2"}};
         s.sets.pop_back();
     },
     {"record|added|TRUCK||||0320, CALC CODE-0320, SALES-AREA, FIXED 46, 1 field",
      "record|removed|REPAIR|||0320, CALC CODE-0320, SALES-AREA, FIXED 46, 3 fields|",
      "set|changed|MODEL-OFFERS|MODEL|members|OFFER, REPAIR|OFFER"}},
    {"a set that goes on naming what has another name",
     [](SchemaContents& s) { s.records[2].name = "MENDING"; },
     {"record|renamed|MENDING||name|REPAIR|MENDING",
      "set|changed|MODEL-OFFERS|MODEL|members|OFFER, REPAIR (now MENDING)|OFFER, REPAIR"}},
    {"a longer field moves those behind it; a filler that is used up is removed",
     [](SchemaContents& s) {
         auto& fields = s.records[2].fields;
         fields[0].picture = "X(10)";
         fields[0].end = "10";
         fields[1].picture = "X(30)                       11";
         fields[1].start = "11";
         fields[1].end = "40";
         fields[2] = {"02", "STATE-0320", "DISPLAY", "X(6)", "41", "46"};
     },
     {"field|changed|CODE-0320|REPAIR|picture|X(8)|X(10)", "field|changed|CODE-0320|REPAIR|position|1-8|1-10",
      "field|moved|TOOL-0320|REPAIR|position|9-38|11-40",
      "field|added|STATE-0320|REPAIR|||02 X(6) DISPLAY at 41-46",
      "field|removed|FILLER|REPAIR||02 X(8) DISPLAY at 39-46|"}},
    {"owner and options of a set, keys of an index",
     [](SchemaContents& s) {
         s.sets[1].connection = "NP\r\nMA NEXT";
         s.indexes[0].keys = {{"NAME-0201", "DSC"}, {"CODE-0201", "ASC"}};
     },
     {"set|changed|MODEL-OFFERS|MODEL|pointers of REPAIR|NPO|NP",
      "set|changed|MODEL-OFFERS|MODEL|order of REPAIR|MA LAST|MA NEXT",
      "index|changed|MODEL-IX|MODEL|keys|NAME-0201 ASC|NAME-0201 DSC, CODE-0201 ASC"}},
    {"an index that only the record names",
     [](SchemaContents& s) { s.records[0].indexes[0] = "BARE-IX"; },
     {"index|added|BARE-IX|MODEL|||MODEL"}},
};

TEST(Compare, FindsEachEditOnceWithBothValues) {
    for (const Case& each : kCases) {
        SchemaContents present = Sample();
        each.edit(present);
        EXPECT_THAT(Lines(Sample(), present), ElementsAreArray(each.lines)) << each.about;
    }
}

TEST(Compare, SaysItInOneLine) {
    SchemaContents present = Sample();
    EXPECT_EQ(Summary(Compare(Sample(), present)), "no differences");
    present.records.push_back(Record("TRUCK", "0400"));
    present.sets.clear();
    present.records[0].fields[1].usage = present.records[0].fields[0].usage = "COMP";
    EXPECT_EQ(Summary(Compare(Sample(), present)), "+1 record, -1 set, 2 fields changed");
    EXPECT_EQ(Summary(Compare(Sample(), {})), "-3 records, -1 set, -1 index, -2 areas");
}

}  // namespace
}  // namespace norvelis::compare
