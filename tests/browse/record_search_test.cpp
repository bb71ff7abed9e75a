#include "browse/record_search.h"

#include <gmock/gmock.h>

#include "testing/scripted_host.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;

class RecordSearchTest : public ::testing::Test {
  protected:
    static RecordTree MakeTree() {
        Random random(1);
        RecordTreeBuilder tree(random);
        const auto root = tree.Add(kNoNode, tree.Intern("EMPSCHM"));
        const auto dept = tree.Add(root, tree.Intern("DEPT-EMP"));
        tree.Add(dept, tree.Intern("JOB"));
        tree.Add(root, tree.Intern("employee"));
        tree.Add(root, tree.Intern("EMPLOYEE"));
        return std::move(tree).Complete();
    }

    const RecordTree tree = MakeTree();
    ScriptedHost host;
    RecordSearch search;
};

TEST_F(RecordSearchTest, StepsThroughEveryNodeThatHoldsTheTextAndThenSaysTheEnd) {
    EXPECT_EQ(search.Caption(), "SEARCH");
    EXPECT_EQ(search.Click(host, tree, " emp "), 0u);
    EXPECT_EQ(search.Caption(), "NEXT");
    EXPECT_EQ(search.Click(host, tree, "emp"), 1u);
    EXPECT_EQ(search.Click(host, tree, "emp"), 4u);  // lower-case names are other names
    EXPECT_TRUE(host.messages.empty());
    EXPECT_EQ(search.Click(host, tree, "emp"), std::nullopt);
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].text, "End of search for record: EMP");
    EXPECT_EQ(host.messages[0].title, "Search Results");
    EXPECT_EQ(host.messages[0].icon, Icon::Information);
    EXPECT_EQ(search.Caption(), "SEARCH");
    EXPECT_EQ(search.Click(host, tree, "emp"), 0u);
    EXPECT_EQ(host.waitCursor, 0);
}

TEST_F(RecordSearchTest, AChangedTextStartsAtTheTop) {
    search.Click(host, tree, "EMPLOYEE");
    search.TextChanged();
    EXPECT_EQ(search.Click(host, tree, "EMP"), 0u);
}

TEST_F(RecordSearchTest, WithoutATextItAsksForOne) {
    EXPECT_EQ(search.Click(host, tree, "TYPE HERE "), std::nullopt);
    EXPECT_EQ(search.Click(host, tree, "  "), std::nullopt);
    EXPECT_THAT(host.Texts(),
                ElementsAre("Please type the record to locate", "Please type the record to locate"));
    EXPECT_EQ(search.Caption(), "SEARCH");
}

TEST_F(RecordSearchTest, AnEmptyTreeIsAtItsEndAtOnce) {
    EXPECT_EQ(search.Click(host, RecordTree(), "A"), std::nullopt);
    EXPECT_THAT(host.Texts(), ElementsAre("End of search for record: A"));
}

}  // namespace
}  // namespace norvelis
