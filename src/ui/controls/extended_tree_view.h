#pragma once

#include <optional>
#include <span>
#include <vector>

#include "browse/record_tree.h"

namespace norvelis::ui {

/// Which branches of a record tree are open, and so which nodes have a line on the screen. A node costs one
/// bit and a line four bytes; opening and closing walk the tree once.
class ExtendedTreeView {
  public:
    /// All closed.
    explicit ExtendedTreeView(RecordTree tree);

    const RecordTree& Tree() const { return tree_; }

    void ExpandAll();
    void CollapseAll();
    /// As a tree comes up: every branch with members is open, a schema whose records have none is closed.
    void ExpandMembers();
    void SetExpanded(NodeIndex node, bool expanded);
    void EnsureVisible(NodeIndex node);  ///< Opens all that is above it.

    bool Expanded(NodeIndex node) const { return expanded_[node]; }
    bool HasChildren(NodeIndex node) const { return tree_.SubtreeEnd(node) > node + 1; }

    /// The nodes that have a line, from top to bottom.
    std::span<const NodeIndex> Lines() const { return lines_; }
    /// Nothing for a node in a closed branch.
    std::optional<int> LineOf(NodeIndex node) const;
    /// The node itself, or the closed one above it.
    NodeIndex ShownInstead(NodeIndex node) const;

  private:
    void Rebuild();

    RecordTree tree_;
    std::vector<bool> expanded_;
    std::vector<NodeIndex> lines_;
};

}  // namespace norvelis::ui
