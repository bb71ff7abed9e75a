#include "commands/marked_schema.h"

#include <gtest/gtest.h>

namespace norvelis::commands {
namespace {

TEST(MarkSchema, ARecordWhoseFieldsOnlyChangedPlacesIsMarked) {
    dictionary::SchemaContents schema;
    for (const char* name : {"MAKER", "SHOP"}) {
        auto& record = schema.records.emplace_back();
        record.name = name;
        record.fields = {{"02", "CODE", "DISPLAY", "X(8)", "1", "8"},
                         {"02", "NAME", "DISPLAY", "X(30)", "9", "38"}};
    }
    compare::ComparedEditions editions;
    editions.former.contents = editions.present.contents = schema;
    editions.present.contents.records[0].fields = {{"02", "NAME", "DISPLAY", "X(30)", "1", "30"},
                                                   {"02", "CODE", "DISPLAY", "X(8)", "31", "38"}};
    editions.differences = compare::Compare(editions.former.contents, editions.present.contents);
    const MarkedSchema marked = MarkSchema(editions);
    const Marking* maker = marked.marks.OfRecord("MAKER");
    ASSERT_NE(maker, nullptr);
    EXPECT_EQ(maker->mark, Mark::Changed);
    EXPECT_EQ(maker->words, "CHANGED");
    EXPECT_EQ(marked.marks.OfRecord("SHOP"), nullptr);
}

}  // namespace
}  // namespace norvelis::commands
