#include "browse/find_index.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "browse/found_name.h"
#include "browse/tree_load.h"
#include "dictionary/schema_contents.h"
#include "testing/odd_dictionary.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

constexpr std::size_t kAll = 10'000;

/// "field EMP-ID (EMPLOYEE)", with the schema when it is another than EMPSCHM.
std::vector<std::string> Lines(const FindIndex::Answer& answer) {
    std::vector<std::string> lines;
    for (const FoundName& found : answer.best) {
        const std::string where = WhereOf(found);
        lines.push_back(std::string(NameOf(found.kind)) + " " + found.name +
                        (where.empty() ? "" : " (" + where + ")") +
                        (found.schema == "EMPSCHM" ? "" : " in " + found.schema));
    }
    return lines;
}

class FindIndexTest : public ::testing::Test {
  protected:
    FindIndexTest() {
        SchemaRows rows(store);
        rows.Entry("OFFICE", "EMPLOYEE");
        rows.Record("EMPLOYEE");
        rows.Record("OLD-EMP");
        rows.Set("OFFICE-EMP", "OFFICE", "EMPLOYEE");
        rows.Index("EMP-NAME-IX", "EMPLOYEE", "EMP-NAME", "ASC");
    }
    void AddField(std::string_view record, std::string_view name) {
        Inserter rows(store, "Record_layout", {"schemaname", "Recordname", "fieldname"});
        const std::optional<std::string_view> values[] = {"EMPSCHM", record, name};
        rows.Add(values);
    }
    std::vector<std::string> Find(std::string_view typed, std::size_t most = kAll) {
        return Lines(FindIndex(store).Find(ReadFindText(typed), most));
    }
    std::vector<std::string> WhereUsed(std::string_view typed) {
        return Lines(FindIndex(store).WhereUsed(ReadFindText(typed), kAll));
    }

    TestApp test;
    Connection& store = *test.app.gConnection;
};

TEST_F(FindIndexTest, ListsTheBestFirst) {
    for (const char* field : {"TEMPER", "PAY-EMP", "EMP", "EMP-ID", "FILLER", "FILLER"})
        AddField("OFFICE", field);
    struct Case {
        const char* typed;
        std::vector<std::string> found;
    };
    const Case cases[] = {
        {"emp",
         {"field EMP (OFFICE)", "schema EMPSCHM", "record EMPLOYEE", "index EMP-NAME-IX (EMPLOYEE)",
          "area EMP-REGION (OFFICE)", "area EMP-REGION (EMPLOYEE)", "area EMP-REGION (OLD-EMP)",
          "field EMP-ID (OFFICE)", "record OLD-EMP", "set OFFICE-EMP (OFFICE > EMPLOYEE)",
          "field PAY-EMP (OFFICE)", "field TEMPER (OFFICE)"}},
        {"  Field: emp ",
         {"field EMP (OFFICE)", "field EMP-ID (OFFICE)", "field PAY-EMP (OFFICE)", "field TEMPER (OFFICE)"}},
        {"record:EMP*", {"record EMPLOYEE"}},
        {"*-EMP", {"record OLD-EMP", "set OFFICE-EMP (OFFICE > EMPLOYEE)", "field PAY-EMP (OFFICE)"}},
        {"EMP-?D", {"field EMP-ID (OFFICE)"}},
        {"id:4", {"id 415 (OFFICE)", "id 415 (EMPLOYEE)", "id 415 (OLD-EMP)"}},
        {"set:", {"set OFFICE-EMP (OFFICE > EMPLOYEE)"}},
        {"filler", {"field FILLER (OFFICE)"}},
        {"emp:id", {}},
        {"EMP\n", {}}};
    for (const Case& one : cases) EXPECT_THAT(Find(one.typed), ElementsAreArray(one.found)) << one.typed;
    const auto answer = FindIndex(store).Find(ReadFindText("emp"), 3);
    EXPECT_THAT(Lines(answer), ElementsAreArray({"field EMP (OFFICE)", "schema EMPSCHM", "record EMPLOYEE"}));
    EXPECT_EQ(answer.count, 12u);
}

TEST_F(FindIndexTest, OddNamesAreFoundAndShownAsTheyAre) {
    const std::string blanks(30, ' ');
    const std::string names[] = {
        "O'BRIEN \"X\"", "GR\u00d6\u00dfE-\u00fc", "A" + blanks + "B", blanks, "100%", "back\\slash", ""};
    for (const auto& name : names) AddField("OFFICE", name);
    const auto field = [](const std::string& name) {
        return std::vector<std::string>{"field " + name + " (OFFICE)"};
    };
    EXPECT_EQ(Find("o'brien \"x\""), field(names[0]));
    EXPECT_EQ(Find("\u00d6\u00dfe"), field(names[1]));
    EXPECT_EQ(Find("gr??e-?"), field(names[1])) << "a wild card is one character, not one byte";
    EXPECT_EQ(Find("A" + blanks + "B"), field(names[2]));
    EXPECT_THAT(Find(blanks),
                ElementsAreArray({"field " + blanks + " (OFFICE)", "field " + names[2] + " (OFFICE)"}));
    EXPECT_EQ(Find("0%"), field(names[4]));
    EXPECT_EQ(Find("K\\S"), field(names[5]));
    EXPECT_EQ(Find("field:").front(), "field  (OFFICE)") << "one without a name";
}

TEST_F(FindIndexTest, WhereUsedListsTheRecordsWithThatFieldOrEnding) {
    AddField("OFFICE", "PAID");
    AddField("OLD-EMP", "EMP-ID");
    AddField("EMPLOYEE", "OFFICE-ID");
    AddField("OFFICE", "ID");
    AddField("OFFICE", "ID-OLD");
    EXPECT_THAT(WhereUsed("id"), ElementsAreArray({"field ID (OFFICE)", "field OFFICE-ID (EMPLOYEE)",
                                                   "field EMP-ID (OLD-EMP)", "field PAID (OFFICE)"}));
    EXPECT_THAT(WhereUsed("*-ID"),
                ElementsAreArray({"field OFFICE-ID (EMPLOYEE)", "field EMP-ID (OLD-EMP)"}));
    EXPECT_THAT(WhereUsed("EMPLOYEE"), IsEmpty()) << "a record";
}

TEST(MatchesPattern, TakesTheWholeName) {
    struct Case {
        const char *name, *pattern;
        bool matches;
    };
    const Case cases[] = {{"ABC", "A*C", true},
                          {"AC", "A*C", true},
                          {"ABCD", "A*C", false},
                          {"ABABC", "*ABC", true},
                          {"ABC", "???", true},
                          {"ABC", "??", false},
                          {"ABC", "A?*?", true},
                          {"AB", "A?*?", false},
                          {"", "*", true},
                          {"", "?", false},
                          {"A-B-C-D", "*-*-D", true},
                          {"A*B", "A**B", true},
                          {"ABCABD", "*AB?ABD", true},
                          {"ABCABD", "*ABE*", false}};
    for (const Case& one : cases)
        EXPECT_EQ(MatchesPattern(one.name, one.pattern), one.matches) << one.name << " " << one.pattern;
}

/// "RECORD REC-1 ()" of every name that holds the text, sorted; found by the index, and by reading all names.
std::vector<std::string> FoundByIndex(const FindIndex& index, const std::string& text) {
    std::vector<std::string> lines;
    const FindKinds kinds = Only(FindKind::Record) | Only(FindKind::Set) | Only(FindKind::Index);
    for (const FoundName& found : index.Find({text, kinds}, kAll).best)
        lines.push_back(UpperCase(NameOf(found.kind)) + " " +
                        UpperCase(found.name + " (" + WhereOf(found) + ")"));
    std::ranges::sort(lines);
    return lines;
}
std::vector<std::string> FoundByReading(Connection& store, const std::string& text) {
    std::vector<std::string> lines;
    const auto take = [&](const std::string& kind, const std::string& name, const std::string& where) {
        if (UpperCase(name).find(text) != std::string::npos)
            lines.push_back(kind + " " + UpperCase(name + " (" + where + ")"));
    };
    for (const char* schema : {"SCHEMA0", "SCHEMA1", "SCHEMA2"}) {
        const auto contents = dictionary::ReadSchema(store, schema);
        for (const auto& record : contents.records) take("RECORD", record.name, "");
        for (const auto& set : contents.sets) take("SET", set.name, set.owner + " > " + set.member);
        for (const auto& index : contents.indexes) take("INDEX", index.name, index.member);
    }
    std::ranges::sort(lines);
    return lines;
}

TEST(FindIndex, FindsWhatAReadingOfEveryNameFinds) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        TestApp test;
        Connection& store = *test.app.gConnection;
        WriteDictionary(store, GenerateOddDictionary(seed));
        const FindIndex index(store);
        for (const std::string text : {"-", "REC-1", "SET-3", "IX", "0"})
            EXPECT_EQ(FoundByIndex(index, text), FoundByReading(store, text))
                << "seed " << seed << ", " << text;
    }
}

TEST_F(FindIndexTest, WhatHasGoneIsKnownAndNodesAreTheirOwnersMembers) {
    AddField("EMPLOYEE", "EMP-ID");
    const auto all = FindIndex(store).Find(ReadFindText("*"), kAll).best;
    const RecordTree tree = loadnodesfromaccess(test.app, store, kTreeview);
    FindKinds seen;
    for (const FoundName& found : all) {
        EXPECT_TRUE(IsInDictionary(store, found)) << found.name;
        seen |= Only(found.kind);
        const NodeIndex node = NodeOf(tree, found);
        if (found.record == "OLD-EMP") {
            EXPECT_EQ(node, kNoNode) << "no set leads there";
        } else {
            const std::string wanted = found.kind == FindKind::Schema ? found.schema
                                       : found.kind == FindKind::Set  ? found.member
                                                                      : found.record;
            ASSERT_NE(node, kNoNode) << found.name;
            EXPECT_EQ(tree.Text(node), wanted);
        }
    }
    EXPECT_TRUE(seen.all());
    for (const char* table : {"Record_Details", "Record_layout", "Connection_Details", "Index_Details"})
        store.Execute(std::string("Delete * FROM ") + table);
    for (const FoundName& found : all) EXPECT_FALSE(IsInDictionary(store, found)) << found.name;
    EXPECT_EQ(WordsForGone(all.back()).find("The dictionary has no "), 0u);
}

}  // namespace
}  // namespace norvelis
