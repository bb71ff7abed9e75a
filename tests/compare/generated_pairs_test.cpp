// A thousand pairs of schemas, the second made from the first by edits that are known.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "compare/comparison_text.h"
#include "compare/edited_schema.h"
#include "dictionary/schemas.h"
#include "testing/odd_dictionary.h"
#include "testing/test_store.h"

namespace norvelis::compare {
namespace {

std::set<std::string> Found(const Comparison& comparison) {
    std::set<std::string> found;
    for (const Difference& each : comparison) {
        if (each.change == Change::Moved) continue;
        std::string edit =
            std::string(NameOf(each.kind)) + " " + std::string(NameOf(each.change)) + " " + each.name;
        if (each.kind == Kind::Field) edit += " in " + each.where;
        found.insert(std::move(edit));
    }
    return found;
}

std::set<std::string> Without(const std::set<std::string>& some, const std::set<std::string>& others) {
    std::set<std::string> rest;
    std::ranges::set_difference(some, others, std::inserter(rest, rest.end()));
    return rest;
}

TEST(GeneratedPairs, AllEditsAreFoundAndNoneIsInvented) {
    std::size_t edits = 0, renames = 0, missedRenames = 0;
    for (std::uint64_t seed = 1; seed <= 1000; ++seed) {
        const EditedSchema pair = MakeEditedSchema(seed);
        const auto found = Found(Compare(pair.former, pair.present));
        const auto missed = Without(pair.edits, found);
        edits += pair.edits.size();
        renames += pair.renames;
        // A rename that is not recognised is still found, as one thing less and one more.
        const auto isRename = [](const std::string& edit) {
            return edit.find(" renamed ") != std::string::npos;
        };
        missedRenames += static_cast<std::size_t>(std::ranges::count_if(missed, isRename));
        if (std::ranges::all_of(missed, isRename) && !missed.empty()) continue;
        EXPECT_EQ(missed, std::set<std::string>{}) << "seed " << seed;
        EXPECT_EQ(Without(found, pair.edits), std::set<std::string>{}) << "seed " << seed;
        EXPECT_EQ(Compare(pair.present, pair.present).size(), 0u) << "seed " << seed;
    }
    EXPECT_GT(edits, 3000u);
    EXPECT_GT(renames, 1000u);
    EXPECT_LE(missedRenames * 100, renames * 5);
    RecordProperty("missedRenames", static_cast<int>(missedRenames));
}

TEST(GeneratedPairs, SchemasWithRepeatedAndEmptyNamesAreEqualToThemselves) {
    TestApp test;
    Connection& store = *test.app.gConnection;
    std::size_t schemas = 0;
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        WriteDictionary(store, GenerateOddDictionary(seed));
        for (auto row = dictionary::SchemasOfRecords(store); !row.Eof(); row.MoveNext()) {
            const auto schema = dictionary::ReadSchema(store, row.Text("schemaname"));
            EXPECT_EQ(Summary(Compare(schema, schema)), "no differences") << "seed " << seed;
            ++schemas;
        }
    }
    EXPECT_GT(schemas, 100u);
}

}  // namespace
}  // namespace norvelis::compare
