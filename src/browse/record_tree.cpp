#include "browse/record_tree.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "core/text.h"

namespace norvelis {

namespace {

/// Sorts the numbers 0 to keys.size() - 1 by key, stably, in linear time: `order` lists them, those of key k
/// from begin[k] up to begin[k + 1].
template <typename KeyOf>
void CountingSort(NodeIndex count, std::size_t keys, const KeyOf& keyOf, std::vector<NodeIndex>& order,
                  std::vector<NodeIndex>& begin) {
    begin.assign(keys + 1, 0);
    for (NodeIndex i = 0; i < count; ++i) ++begin[keyOf(i) + 1];
    for (std::size_t k = 0; k < keys; ++k) begin[k + 1] += begin[k];
    order.resize(count);
    std::vector<NodeIndex> next(begin.begin(), begin.end() - 1);
    for (NodeIndex i = 0; i < count; ++i) order[next[keyOf(i)]++] = i;
}

}  // namespace

RecordTree::RecordTree(Random& random) : guidHigh_(random.Bits()), guidLow_(random.Bits()) {}

RecordTree::TextId RecordTree::Intern(std::string_view text) {
    const auto [entry, isNew] = textIds_.try_emplace(std::string(text), static_cast<TextId>(texts_.size()));
    if (isNew) texts_.push_back(&entry->first);
    return entry->second;
}

NodeIndex RecordTree::Add(NodeIndex parent, TextId text) {
    nodes_.push_back({parent, text, parent == kNoNode ? text : nodes_[parent].schema});
    return Size() - 1;
}

void RecordTree::Complete() {
    const NodeIndex count = Size();
    // Roots hang from a parent of their own behind the last node.
    CountingSort(
        count, count + 1u, [this, count](NodeIndex i) { return std::min(nodes_[i].parent, count); },
        children_, childrenBegin_);
    CountingSort(
        count, texts_.size(), [this](NodeIndex i) { return nodes_[i].text; }, byText_, byTextBegin_);

    rows_.resize(count);
    for (NodeIndex i = 0; i < count; ++i) {
        rows_[children_[i]] = i - childrenBegin_[std::min(nodes_[children_[i]].parent, count)];
    }
    ends_.resize(count);
    for (NodeIndex i = 0; i < count; ++i) ends_[i] = i + 1;
    for (NodeIndex i = count; i-- > 0;) {
        const NodeIndex parent = nodes_[i].parent;
        if (parent != kNoNode) ends_[parent] = std::max(ends_[parent], ends_[i]);
    }
}

std::string RecordTree::Key(NodeIndex node) const {
    return Schema(node) + "**" + CreateGUID(guidHigh_, guidLow_ + node);
}

std::span<const NodeIndex> RecordTree::Children(NodeIndex node) const {
    if (children_.empty()) return {};
    const std::size_t parent = std::min(node, Size());
    return std::span(children_).subspan(childrenBegin_[parent],
                                        childrenBegin_[parent + 1] - childrenBegin_[parent]);
}

int RecordTree::Level(NodeIndex node) const {
    int level = 1;
    while ((node = nodes_[node].parent) != kNoNode) ++level;
    return level;
}

std::span<const NodeIndex> RecordTree::NodesOf(std::string_view text) const {
    const auto entry = textIds_.find(std::string(text));
    if (entry == textIds_.end() || entry->second + 1 >= byTextBegin_.size()) return {};
    const NodeIndex begin = byTextBegin_[entry->second];
    return std::span(byText_).subspan(begin, byTextBegin_[entry->second + 1] - begin);
}

RecordTree RecordTree::Subtree(NodeIndex node) const {
    RecordTree copy;
    copy.guidHigh_ = guidHigh_;
    copy.guidLow_ = guidLow_ + node;
    copy.nodes_.reserve(ends_[node] - node);
    for (NodeIndex i = node; i < ends_[node]; ++i) {
        const NodeIndex parent = i == node ? kNoNode : nodes_[i].parent - node;
        copy.nodes_.push_back({parent, copy.Intern(Text(i)), copy.Intern(Schema(i))});
    }
    copy.Complete();
    return copy;
}

std::string CreateGUID(std::uint64_t high, std::uint64_t low) {
    unsigned char bytes[16];
    std::memcpy(bytes, &high, 8);
    std::memcpy(bytes + 8, &low, 8);
    return HexText(bytes);
}

}  // namespace norvelis
