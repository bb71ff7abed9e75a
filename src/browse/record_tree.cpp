#include "browse/record_tree.h"

#include <algorithm>
#include <cstring>

#include "base/text.h"

namespace norvelis {

RecordTree::RecordTree() : content_(std::make_shared<Content>()) {}

NodeIndex RecordTree::Parent(NodeIndex node) const {
    const NodeIndex parent = At(node).parent;
    return node == 0 || parent == kNoNode ? kNoNode : parent - first_;
}

std::string RecordTree::Key(NodeIndex node) const {
    return Schema(node) + "**" + CreateGUID(content_->guidHigh, content_->guidLow + first_ + node);
}

std::vector<NodeIndex> RecordTree::Children(NodeIndex node) const {
    std::vector<NodeIndex> children;
    const NodeIndex end = node == kNoNode ? Size() : SubtreeEnd(node);
    for (NodeIndex child = node == kNoNode ? 0 : node + 1; child < end; child = SubtreeEnd(child))
        children.push_back(child);
    return children;
}

int RecordTree::Level(NodeIndex node) const {
    int level = 1;
    while ((node = Parent(node)) != kNoNode) ++level;
    return level;
}

NodeIndex RecordTree::FirstOf(std::string_view text, std::string_view schema) const {
    const auto entry = content_->textIds.find(std::string(text));
    if (entry == content_->textIds.end()) return kNoNode;
    if (schema.empty()) return FirstOf(entry->second, 0, Size());
    for (const NodeIndex root : Roots()) {
        if (Schema(root) == schema) return FirstOf(entry->second, root, SubtreeEnd(root));
    }
    return kNoNode;
}

NodeIndex RecordTree::FirstOf(TextId text, NodeIndex begin, NodeIndex end) const {
    const auto nodes = content_->byText.begin();
    const auto last = nodes + content_->byTextBegin[text + 1];
    const auto found = std::lower_bound(nodes + content_->byTextBegin[text], last, first_ + begin);
    return found != last && *found < first_ + end ? *found - first_ : kNoNode;
}

RecordTree RecordTree::Subtree(NodeIndex node) const {
    return {content_, first_ + node, At(node).end};
}

RecordTreeBuilder::RecordTreeBuilder(Random& random) : content_(std::make_shared<RecordTree::Content>()) {
    content_->guidHigh = random.Bits();
    content_->guidLow = random.Bits();
}

RecordTree::TextId RecordTreeBuilder::Intern(std::string_view text) {
    auto& texts = content_->texts;
    const auto [entry, isNew] =
        content_->textIds.try_emplace(std::string(text), static_cast<RecordTree::TextId>(texts.size()));
    if (isNew) texts.push_back(&entry->first);
    return entry->second;
}

NodeIndex RecordTreeBuilder::Add(NodeIndex parent, RecordTree::TextId text) {
    auto& nodes = content_->nodes;
    nodes.push_back({parent, text, parent == kNoNode ? text : nodes[parent].schema, 0});
    return Size() - 1;
}

void RecordTreeBuilder::MarkIncomplete(std::string_view schema, std::string_view record) {
    content_->incomplete.insert({Intern(schema), Intern(record)});
}

RecordTree RecordTreeBuilder::Complete() && {
    auto& [nodes, textIds, texts, byText, begin, guidHigh, guidLow, incomplete] = *content_;
    begin.assign(texts.size() + 1, 0);
    for (NodeIndex i = Size(); i-- > 0;) {
        RecordTree::Node& node = nodes[i];
        if (node.end == 0) node.end = i + 1;
        ++begin[node.text + 1];
        if (node.parent == kNoNode) continue;
        RecordTree::Node& parent = nodes[node.parent];
        if (parent.end == 0) parent.end = node.end;  // The last child comes first.
    }
    for (std::size_t text = 0; text < texts.size(); ++text) begin[text + 1] += begin[text];
    byText.resize(nodes.size());
    std::vector<NodeIndex> next(begin.begin(), begin.end() - 1);
    for (NodeIndex i = 0; i < Size(); ++i) byText[next[nodes[i].text]++] = i;
    const NodeIndex end = Size();
    return {std::move(content_), 0, end};
}

std::string CreateGUID(std::uint64_t high, std::uint64_t low) {
    unsigned char bytes[16];
    std::memcpy(bytes, &high, 8);
    std::memcpy(bytes + 8, &low, 8);
    return HexText(bytes);
}

}  // namespace norvelis
