#include "browse/tree_load.h"

#include <gmock/gmock.h>

#include <set>

#include "base/paths.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class TreeLoadTest : public ::testing::Test {
  protected:
    RecordTree Load(const TreeVariant& variant = kTreeview) {
        return loadnodesfromaccess(app, *store, variant);
    }

    /// One line a node, a dot for each level above it.
    static std::string Drawn(const RecordTree& tree) {
        std::string text;
        for (NodeIndex node = 0; node < tree.Size(); ++node) {
            text += std::string(static_cast<std::size_t>(tree.Level(node) - 1), '.') + tree.Text(node) + "\n";
        }
        return text;
    }

    TestApp test;
    AppState& app = test.app;
    Connection* store = app.gConnection.get();
};

TEST_F(TreeLoadTest, SchemasByNameEntryRecordsByNameMembersAsListed) {
    {
        SchemaRows(*store, "SECOND").Entry("OFFICE", "EMPLOYEE");
        SchemaRows first(*store, "FIRST");
        first.Entry("JOB", "STRUCTURE,EMPLOYEE");
        first.Entry("DEPARTMENT", "EMPLOYEE,MISSING,STRUCTURE");
        first.Record("EMPLOYEE", "COVERAGE");
        first.Record("STRUCTURE");
        first.Record("COVERAGE");
    }
    EXPECT_EQ(Drawn(Load()),
              "FIRST\n"
              ".DEPARTMENT\n"
              "..EMPLOYEE\n"
              "...COVERAGE\n"
              "..STRUCTURE\n"
              ".JOB\n"
              "..STRUCTURE\n"
              "..EMPLOYEE\n"
              "...COVERAGE\n"
              "SECOND\n"
              ".OFFICE\n"
              "..EMPLOYEE\n"
              "...COVERAGE\n");
    const RecordTree inStoreOrder = Load(kTreeviewMax);
    EXPECT_EQ(inStoreOrder.Text(1), "JOB");
    EXPECT_EQ(inStoreOrder.Text(5), "DEPARTMENT");
}

TEST_F(TreeLoadTest, MembersAreLookedUpByNameAloneAndTheFirstRowCounts) {
    {
        SchemaRows first(*store, "A");
        first.Entry("OWNER", "ONE");
        first.Record("ONE");
    }
    {
        SchemaRows second(*store, "B");
        second.Entry("owner", "TWO");
        second.Record("TWO");
        second.Entry("LOWER", "one , Two");
    }
    EXPECT_EQ(Drawn(Load()), "A\n.OWNER\n..ONE\nB\n.LOWER\n..one\n..Two\n.owner\n..ONE\n");
}

TEST_F(TreeLoadTest, ACycleEndsAtANameThatIsOnItsOwnPath) {
    {
        SchemaRows rows(*store);
        rows.Entry("A", "B,C");
        rows.Record("B", "C,A");
        rows.Record("C", "B");
    }
    EXPECT_EQ(Drawn(Load()), "EMPSCHM\n.A\n..B\n...C\n....B\n...A\n..C\n...B\n....C\n....A\n");
}

TEST_F(TreeLoadTest, AChainOfAHundredThousandSetsIsWalkedToItsEnd) {
    constexpr int kLength = 100'000;
    {
        SchemaRows rows(*store);
        rows.Entry("R0", "R1");
        for (int i = 1; i < kLength; ++i) rows.Record("R" + std::to_string(i), "R" + std::to_string(i + 1));
        rows.Record("R" + std::to_string(kLength));
    }
    const RecordTree tree = Load();
    EXPECT_EQ(tree.Size(), kLength + 2u);
    EXPECT_EQ(tree.Level(tree.Size() - 1), kLength + 2);
}

TEST_F(TreeLoadTest, KeysAreUniqueAndSayTheSchemaAlsoInASubtree) {
    {
        SchemaRows rows(*store);
        rows.Entry("A", "B,B,B");
        rows.Record("B");
        rows.Entry("C", "B");
    }
    const RecordTree tree = Load();
    std::set<std::string> keys;
    for (NodeIndex node = 0; node < tree.Size(); ++node) {
        const std::string key = tree.Key(node);
        EXPECT_THAT(key, ::testing::MatchesRegex("EMPSCHM[*][*][0-9A-F]+"));
        EXPECT_EQ(key.size(), 7u + 2u + 32u);
        keys.insert(key);
    }
    EXPECT_EQ(keys.size(), tree.Size());

    const RecordTree a = tree.Subtree(1);
    EXPECT_EQ(Drawn(a), "A\n.B\n.B\n.B\n");
    for (NodeIndex node = 0; node < a.Size(); ++node) EXPECT_EQ(a.Key(node), tree.Key(node + 1));
    EXPECT_NE(Load().Key(0), tree.Key(0));
}

TEST_F(TreeLoadTest, NodesAreFoundByNameAndPlace) {
    {
        SchemaRows rows(*store);
        rows.Entry("A", "M,B");
        rows.Record("M");
        rows.Record("B", "M");
        rows.Entry("C", "M");
    }
    const RecordTree tree = Load();  // 0 EMPSCHM, 1 A, 2 M, 3 B, 4 M, 5 C, 6 M
    EXPECT_EQ(tree.FirstOf("M"), 2u);
    EXPECT_EQ(tree.FirstOf("M", "EMPSCHM"), 2u);
    EXPECT_EQ(tree.FirstOf("m"), kNoNode);
    EXPECT_EQ(tree.FirstOf("M", "OTHER"), kNoNode);
    EXPECT_THAT(tree.Roots(), ElementsAre(0));
    EXPECT_THAT(tree.Children(0), ElementsAre(1, 5));
    EXPECT_THAT(tree.Children(1), ElementsAre(2, 3));
    EXPECT_TRUE(tree.Children(6).empty());
    EXPECT_EQ(tree.Parent(4), 3u);
    EXPECT_EQ(tree.SubtreeEnd(1), 5u);

    const RecordTree b = tree.Subtree(3).Subtree(0);
    EXPECT_EQ(b.Size(), 2u);
    EXPECT_EQ(b.FirstOf("M"), 1u);
    EXPECT_EQ(b.FirstOf("A"), kNoNode) << "before its begin";
    EXPECT_EQ(tree.Subtree(1).FirstOf("C"), kNoNode) << "right behind its end";
    EXPECT_EQ(b.Parent(0), kNoNode);
    EXPECT_EQ(b.Parent(1), 0u);
    EXPECT_THAT(b.Roots(), ElementsAre(0));
}

TEST_F(TreeLoadTest, ASchemaIsSearchedUpToItsEnd) {
    SchemaRows(*store, "FIRST").Entry("A");
    SchemaRows(*store, "SECOND").Entry("B");
    const RecordTree tree = Load();  // 0 FIRST, 1 A, 2 SECOND, 3 B
    EXPECT_EQ(tree.FirstOf("B", "FIRST"), kNoNode);
    EXPECT_EQ(tree.FirstOf("SECOND", "FIRST"), kNoNode) << "right behind the end";
    EXPECT_EQ(tree.FirstOf("B", "SECOND"), 3u);
}

TEST_F(TreeLoadTest, AnEmptyStoreGivesAnEmptyTreeWithoutAWord) {
    const RecordTree tree = process_Refresh(app, *store, kTreeview);
    EXPECT_EQ(tree.Size(), 0u);
    EXPECT_TRUE(tree.Roots().empty());
    EXPECT_TRUE(tree.FirstOf("A") == kNoNode);
    EXPECT_TRUE(test.host.messages.empty());
}

TEST_F(TreeLoadTest, ProgressIsShownOnTheTreeScreenOnly) {
    {
        SchemaRows rows(*store);
        for (int i = 0; i < 10; ++i) rows.Entry("R" + std::to_string(i), i == 3 ? "R9" : "");
    }
    process_Refresh(app, *store, kTreeviewMax);
    EXPECT_TRUE(test.host.progress.empty());

    process_Refresh(app, *store, kTreeview);
    EXPECT_EQ(app.progress[Bar::BackgroundValue].Value, 10);
    EXPECT_EQ(app.progress[Bar::BackgroundValue].Text, "90% Complete. Loading R8");
    EXPECT_EQ(app.progress[Bar::TreeviewText].Text, "Loading... R9 Please wait...");
    EXPECT_FALSE(app.progress[Bar::TreeviewText].Visible);
    std::vector<std::string> texts;
    for (const auto& [bar, state] : test.host.progress) {
        if (bar == Bar::TreeviewText) texts.push_back(state.Text);
    }
    EXPECT_EQ(texts[1], "Retrieving Records Details..");
    EXPECT_EQ(texts[3], "Loading... R0 Please wait...");
}

TEST_F(TreeLoadTest, AFailingStoreLeavesAPartialTreeAndOneEntryInTheLog) {
    {
        SchemaRows rows(*store);
        rows.Entry("A", "B");
        rows.Entry("B");
    }
    store->Execute("Drop table Record_Details");
    EXPECT_EQ(Drawn(Load()), "EMPSCHM\n.A\n.B\n");
    EXPECT_EQ(test.host.messages.size(), 1u);
    EXPECT_THAT(ReadFile(app.AppPath("\\INI\\ErrorLog.Txt")),
                HasSubstr("frmTreeview ---- loadchildren ---- "));

    store->Execute("Drop table Parents");
    EXPECT_EQ(Load().Size(), 0u);
    EXPECT_THAT(ReadFile(app.AppPath("\\INI\\ErrorLog.Txt")),
                HasSubstr("frmTreeview ---- loadnodesfromaccess ---- "));
}

TEST_F(TreeLoadTest, RecordsThatWereNotReadToTheirEndAreMarkedWhereverTheyAre) {
    {
        SchemaRows rows(*store);
        rows.Entry("A", "B,C");
        rows.Record("B");
        rows.Record("C");
    }
    store->Execute("Update Record_Details set Information = 'box' where Recordname <> 'B'");
    const RecordTree tree = Load();
    EXPECT_FALSE(tree.IsIncomplete(tree.FirstOf("EMPSCHM")));
    EXPECT_FALSE(tree.IsIncomplete(tree.FirstOf("A")));
    EXPECT_TRUE(tree.IsIncomplete(tree.FirstOf("B")));
    EXPECT_FALSE(tree.IsIncomplete(tree.FirstOf("C")));
    EXPECT_TRUE(tree.Subtree(1).IsIncomplete(1)) << "B below A";
}

TEST_F(TreeLoadTest, MorePathsThanMemoryStopAtTheLimitWithAWord) {
    {
        SchemaRows rows(*store);
        rows.Entry("R0", "R1,R1");
        for (int i = 1; i < 60; ++i) {
            const std::string next = "R" + std::to_string(i + 1);
            rows.Record("R" + std::to_string(i), next + "," + next);
        }
        rows.Entry("R60");
    }
    const RecordTree tree = loadnodesfromaccess(app, *store, kTreeview, 1000);
    EXPECT_EQ(tree.Size(), 1001u);
    EXPECT_EQ(tree.Text(1000), "R60");  // entry records still come
    ASSERT_EQ(test.host.messages.size(), 1u);
    EXPECT_THAT(test.host.messages[0].text, HasSubstr("the record tree has more than 1000 nodes"));
}

}  // namespace
}  // namespace norvelis
