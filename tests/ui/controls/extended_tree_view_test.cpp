#include "ui/controls/extended_tree_view.h"

#include <gmock/gmock.h>

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;

/// Nodes by their parents, in the order of their numbers.
RecordTree TreeOf(const std::vector<NodeIndex>& parents) {
    Random random(1);
    RecordTreeBuilder tree(random);
    for (std::size_t i = 0; i < parents.size(); ++i)
        tree.Add(parents[i], tree.Intern("NODE-" + std::to_string(i)));
    return std::move(tree).Complete();
}

std::vector<NodeIndex> LinesOf(const ExtendedTreeView& branches) {
    return {branches.Lines().begin(), branches.Lines().end()};
}

// Two schemas: the first with an entry record of two levels and one without members, the second flat.
const std::vector<NodeIndex> kSmall = {kNoNode, 0, 1, 2, 1, 0, kNoNode, 6};

TEST(ExtendedTreeView, AtFirstBranchesWithMembersAreOpenAndSchemasWithoutAnyAreNot) {
    ExtendedTreeView branches(TreeOf(kSmall));
    EXPECT_THAT(LinesOf(branches), ElementsAre(0, 6));
    branches.ExpandMembers();
    EXPECT_THAT(LinesOf(branches), ElementsAre(0, 1, 2, 3, 4, 5, 6));
    branches.ExpandAll();
    EXPECT_THAT(LinesOf(branches), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
}

TEST(ExtendedTreeView, AClosedBranchKeepsWhatIsOpenInside) {
    ExtendedTreeView branches(TreeOf(kSmall));
    branches.ExpandAll();
    branches.SetExpanded(2, false);
    branches.SetExpanded(0, false);
    EXPECT_THAT(LinesOf(branches), ElementsAre(0, 6, 7));
    EXPECT_EQ(branches.LineOf(6), 1);
    EXPECT_EQ(branches.LineOf(4), std::nullopt);
    EXPECT_EQ(branches.ShownInstead(3), 0u) << "the outermost closed node is what one sees";
    branches.SetExpanded(0, true);
    EXPECT_THAT(LinesOf(branches), ElementsAre(0, 1, 2, 4, 5, 6, 7));
    EXPECT_EQ(branches.ShownInstead(3), 2u);
    EXPECT_EQ(branches.ShownInstead(5), 5u);
}

TEST(ExtendedTreeView, EnsureVisibleOpensTheWayDown) {
    ExtendedTreeView branches(TreeOf(kSmall));
    branches.EnsureVisible(3);
    EXPECT_THAT(LinesOf(branches), ElementsAre(0, 1, 2, 3, 4, 5, 6));
    EXPECT_FALSE(branches.Expanded(3)) << "what is below stays as it was";
}

void AppendShown(const ExtendedTreeView& branches, NodeIndex node, std::vector<NodeIndex>& lines) {
    lines.push_back(node);
    if (!branches.Expanded(node)) return;
    for (const NodeIndex child : branches.Tree().Children(node)) AppendShown(branches, child, lines);
}

TEST(ExtendedTreeView, LinesAreTheOpenNodesInOrderWhateverIsOpenedAndClosed) {
    Random random(7);
    std::vector<NodeIndex> parents{kNoNode};
    std::vector<NodeIndex> branch{0};  // A child hangs from a node of the branch added last.
    for (NodeIndex node = 1; node < 300; ++node) {
        branch.resize(1 + static_cast<std::size_t>(random.Rnd() * static_cast<double>(branch.size())));
        parents.push_back(branch.back());
        branch.push_back(node);
    }
    ExtendedTreeView branches(TreeOf(parents));
    for (int step = 0; step < 400; ++step) {
        branches.SetExpanded(static_cast<NodeIndex>(random.Rnd() * 300), random.Rnd() < 0.7);
        std::vector<NodeIndex> expected;
        AppendShown(branches, 0, expected);
        ASSERT_EQ(LinesOf(branches), expected) << "step " << step;
    }
}

TEST(ExtendedTreeView, NoTreeHasNoLines) {
    ExtendedTreeView branches(TreeOf({}));
    branches.ExpandAll();
    EXPECT_TRUE(branches.Lines().empty());
}

}  // namespace
}  // namespace norvelis::ui
