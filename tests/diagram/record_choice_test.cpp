#include "diagram/record_choice.h"

#include <gmock/gmock.h>

namespace norvelis {
namespace {

using Kind = RecordChoice::Kind;
using Direction = RecordChoice::Direction;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Two chains that meet: A over B over C over D, X over C; E alone. SYSTEM is no record.
dictionary::SchemaContents Schema() {
    dictionary::SchemaContents schema;
    schema.name = "EMPSCHM";
    const auto record = [&schema](const char* name, const char* area) {
        dictionary::RecordContents contents;
        contents.name = name;
        contents.area = area;
        schema.records.push_back(contents);
    };
    for (const char* name : {"X", "A", "B"}) record(name, "UPPER");
    for (const char* name : {"C", "D", "C"}) record(name, "LOWER");
    record("E", " ");
    schema.sets = {{"A-B", "A", "B", ""},       {"B-C", "B", "C", ""},  {"C-D", "C", "D", ""},
                   {"X-C", "X", "C", ""},       {"X-C2", "X", "C", ""}, {"SYS-E", "SYSTEM", "E", ""},
                   {"SYS-A", "SYSTEM", "A", ""}};
    return schema;
}

RecordChoice Around(const char* record, int steps = 1, Direction direction = Direction::Both) {
    RecordChoice choice;
    choice.kind = Kind::Around;
    choice.name = record;
    choice.steps = steps;
    choice.direction = direction;
    return choice;
}

std::vector<std::string> RecordsOf(const RecordChoice& choice) {
    const ChosenRecords chosen = ChooseRecords(Schema(), choice);
    EXPECT_EQ(chosen.refusal, "");
    return chosen.pages.empty() ? std::vector<std::string>() : chosen.pages.front().records;
}

TEST(ChooseRecords, AroundOneAlongItsSets) {
    EXPECT_THAT(RecordsOf(Around("b")), ElementsAre("A", "B", "C"));
    EXPECT_THAT(RecordsOf(Around("B", 2)), ElementsAre("X", "A", "B", "C", "D"));
    EXPECT_THAT(RecordsOf(Around("B", 2, Direction::Down)), ElementsAre("B", "C", "D"));
    EXPECT_THAT(RecordsOf(Around("C", 9, Direction::Up)), ElementsAre("X", "A", "B", "C"));
    EXPECT_THAT(RecordsOf(Around("E", 9)), ElementsAre("E")) << "no way leads through what is no record";
    EXPECT_EQ(ChooseRecords(Schema(), Around("b")).drawing, "EMPSCHM around B");
}

TEST(ChooseRecords, NamesNarrowTheChoiceAndItsWays) {
    RecordChoice choice = Around("A", 9);
    choice.except = {"c*"};
    EXPECT_THAT(RecordsOf(choice), ElementsAre("A", "B")) << "C was the way to D and X";
    choice = {};
    choice.only = {"a", "?"};
    choice.except = {"E", "X"};
    EXPECT_THAT(RecordsOf(choice), ElementsAre("A", "B", "C", "D"));
    EXPECT_EQ(ChooseRecords(Schema(), choice).drawing, "EMPSCHM selected");
}

TEST(ChooseRecords, EachAreaOnAPageWithReferencesToTheOthers) {
    RecordChoice choice;
    choice.kind = Kind::ByArea;
    const ChosenRecords chosen = ChooseRecords(Schema(), choice);
    EXPECT_EQ(chosen.drawing, "EMPSCHM by area");
    std::vector<std::string> pages;
    for (const ChosenPage& page : chosen.pages) {
        std::string text = page.name + ":";
        for (const std::string& record : page.records) text += " " + record;
        for (const PageReference& reference : page.references)
            text += " ->" + reference.record + "@" + reference.page;
        pages.push_back(text);
    }
    EXPECT_THAT(pages, ElementsAre("LOWER: C D ->B@UPPER ->X@UPPER", "UPPER: X A B ->C@LOWER", "no area: E"));

    choice.kind = Kind::Area;
    choice.name = "lower";
    EXPECT_THAT(RecordsOf(choice), ElementsAre("C", "D"));
    EXPECT_EQ(ChooseRecords(Schema(), choice).drawing, "EMPSCHM area LOWER");
    choice.kind = Kind::AreaOf;
    choice.name = "D";
    EXPECT_EQ(ChooseRecords(Schema(), choice).drawing, "EMPSCHM area LOWER");
    choice.name = "E";
    EXPECT_EQ(ChooseRecords(Schema(), choice).refusal, "record E is in no area");
}

TEST(ChooseRecords, WhatCannotBeDrawnIsRefusedWithTheReason) {
    RecordChoice unknownArea, slip, nothing, itself = Around("B");
    unknownArea.kind = Kind::Area;
    unknownArea.name = "SIDE";
    slip.only = {"A", "Z*"};
    nothing.except = {"*"};
    itself.except = {"B"};
    const std::pair<RecordChoice, std::string> cases[] = {
        {Around("Z"), "there is no record Z in schema EMPSCHM"},
        {unknownArea, "no record of schema EMPSCHM is in area SIDE"},
        {slip, "no record of schema EMPSCHM is called Z*"},
        {nothing, "the choice leaves no record of schema EMPSCHM"},
        {itself, "record B itself is left out"},
    };
    for (const auto& [choice, reason] : cases) EXPECT_EQ(ChooseRecords(Schema(), choice).refusal, reason);
}

}  // namespace
}  // namespace norvelis
