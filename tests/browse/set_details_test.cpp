#include "browse/set_details.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(SetDetails, MemberOptionsAreReadInWords) {
    const struct {
        const char *text, *membership, *order, *keys, *duplicates;
    } cases[] = {
        {"MA ASC MAKER-NAME DL", "mandatory automatic", "sorted", "MAKER-NAME ascending", "last"},
        {"OM NEXT", "optional manual", "next", "", ""},
        {"MM SORTED DN", "mandatory manual", "sorted", "", "not allowed"},
        {"OA DSC DATE NEXT DF", "optional automatic", "sorted", "DATE descending, NEXT descending", "first"},
        {"MA ODD LAST", "mandatory automatic", "ODD last", "", ""},
        {"", "", "", "", ""}};
    for (const auto& [text, membership, order, keys, duplicates] : cases) {
        const MemberOptions options = ReadMemberOptions(text);
        std::string all;
        for (const std::string& key : options.keys) all += (all.empty() ? "" : ", ") + key;
        EXPECT_THAT((std::vector{options.membership, options.order, all, options.duplicates}),
                    ElementsAre(membership, order, keys, duplicates))
            << text;
    }
}

class DescribeSetTest : public ::testing::Test {
  protected:
    using Item = std::array<std::string, 2>;
    TestApp test;
    Connection& store = *test.app.gConnection;
};

TEST_F(DescribeSetTest, TellsTheSetOfTheDrawingsSchema) {
    for (const char* schema : {"OTHER", "MINE"})
        store.Execute(
            "Insert into Connection_Details (schemaname, Recordname, next_step, set, connection) values (?, "
            "'SHOP', 'MAKER', 'STAFF', ?)",
            {schema, std::string(schema) == "MINE" ? "NPO\r\nMA ASC MAKER-NAME DL" : "NP\r\nOM LAST"});
    const auto mine = DescribeSet(store, "mine", "staff", " SHOP ", "maker");
    EXPECT_EQ(mine.missing, "");
    EXPECT_THAT(mine.items, ElementsAre(Item{"Owner", "SHOP"}, Item{"Member", "maker"},
                                        Item{"Membership", "mandatory automatic"}, Item{"Order", "sorted"},
                                        Item{"Keys", "MAKER-NAME ascending"}, Item{"Duplicates", "last"},
                                        Item{"Pointers", "next, prior, owner"}, Item{"Schema", "MINE"}));
    EXPECT_THAT(DescribeSet(store, "NONE", "STAFF", "SHOP", "MAKER").items.back(),
                ElementsAre("Schema", "OTHER"))
        << "a drawing may be anywhere";
    const auto gone = DescribeSet(store, "MINE", "GUESTS", "SHOP", "MAKER");
    EXPECT_THAT(gone.items, IsEmpty());
    EXPECT_THAT(gone.missing, HasSubstr("no set of this name from SHOP to MAKER"));
}

TEST_F(DescribeSetTest, TheKeysOfAnIndexAreItsOwn) {
    store.Execute(
        "Insert into Connection_Details (schemaname, Recordname, next_step, set, connection) values "
        "('MINE', 'SHOP', 'MAKER', 'NAME-IX', ?)",
        {"\r\nMA SORTED DN"});
    store.Execute(
        "Insert into Index_Details (schemaname, Recordname, next_step, sortkey1, sortorder1, sortkey2, "
        "sortorder2) values ('MINE', 'NAME-IX', 'MAKER', 'NAME', 'ASC', 'CITY', 'DSC')");
    const auto items = DescribeSet(store, "MINE", "NAME-IX", "SHOP", "MAKER").items;
    EXPECT_THAT(items, ::testing::Contains(Item{"Keys", "NAME ascending"}));
    EXPECT_THAT(items, ::testing::Contains(Item{"", "CITY descending"}));
}

TEST_F(DescribeSetTest, AStoreThatRefusesIsAReason) {
    store.Execute("Drop table Connection_Details");
    EXPECT_THAT(DescribeSet(store, "MINE", "STAFF", "SHOP", "MAKER").missing,
                HasSubstr("The dictionary does not answer"));
}

}  // namespace
}  // namespace norvelis
