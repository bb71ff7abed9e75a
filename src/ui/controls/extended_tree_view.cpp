#include "ui/controls/extended_tree_view.h"

#include <algorithm>

namespace norvelis::ui {

ExtendedTreeView::ExtendedTreeView(RecordTree tree) : tree_(std::move(tree)), expanded_(tree_.Size()) {
    Rebuild();
}

void ExtendedTreeView::ExpandAll() {
    expanded_.assign(tree_.Size(), true);
    Rebuild();
}

void ExtendedTreeView::CollapseAll() {
    expanded_.assign(tree_.Size(), false);
    Rebuild();
}

void ExtendedTreeView::ExpandMembers() {
    expanded_.assign(tree_.Size(), true);
    for (const NodeIndex schema : tree_.Roots()) {
        const auto records = tree_.Children(schema);
        expanded_[schema] = std::any_of(records.begin(), records.end(),
                                        [this](NodeIndex record) { return HasChildren(record); });
    }
    Rebuild();
}

void ExtendedTreeView::SetExpanded(NodeIndex node, bool expanded) {
    if (expanded_[node] == expanded) return;
    expanded_[node] = expanded;
    Rebuild();
}

void ExtendedTreeView::EnsureVisible(NodeIndex node) {
    bool changed = false;
    while ((node = tree_.Parent(node)) != kNoNode) {
        changed |= !expanded_[node];
        expanded_[node] = true;
    }
    if (changed) Rebuild();
}

std::optional<int> ExtendedTreeView::LineOf(NodeIndex node) const {
    const auto line = std::lower_bound(lines_.begin(), lines_.end(), node);
    if (line == lines_.end() || *line != node) return std::nullopt;
    return static_cast<int>(line - lines_.begin());
}

NodeIndex ExtendedTreeView::ShownInstead(NodeIndex node) const {
    NodeIndex shown = node;
    for (NodeIndex above = tree_.Parent(node); above != kNoNode; above = tree_.Parent(above)) {
        if (!expanded_[above]) shown = above;
    }
    return shown;
}

// Nodes are numbered in the order of their lines, each followed by all that is below it.
void ExtendedTreeView::Rebuild() {
    lines_.clear();
    lines_.reserve(expanded_.size());
    for (NodeIndex node = 0; node < tree_.Size();
         node = expanded_[node] ? node + 1 : tree_.SubtreeEnd(node)) {
        lines_.push_back(node);
    }
}

}  // namespace norvelis::ui
