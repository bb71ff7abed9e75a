#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/random.h"

namespace norvelis {

using NodeIndex = std::uint32_t;
inline constexpr NodeIndex kNoNode = UINT32_MAX;

/// Schemas, their entry records, and below each record its members, to any depth. A network of sets unfolds
/// to far more nodes than it has records, so a node is a few numbers: its parent, its text, its schema.
///
/// Nodes are numbered from 0 in order of creation, each parent followed by all that is below it, so a subtree
/// is a range of numbers. A tree never changes: copies and subtrees share its nodes and cost nothing.
class RecordTree {
  public:
    using TextId = std::uint32_t;

    RecordTree();  ///< Empty.

    NodeIndex Size() const { return end_ - first_; }
    NodeIndex Parent(NodeIndex node) const;  ///< kNoNode for a root.
    TextId TextIdOf(NodeIndex node) const { return At(node).text; }
    const std::string& Text(NodeIndex node) const { return TextOf(At(node).text); }
    const std::string& TextOf(TextId text) const { return *content_->texts[text]; }
    std::size_t TextCount() const { return content_->texts.size(); }
    const std::string& Schema(NodeIndex node) const { return TextOf(At(node).schema); }
    /// True for a record whose section of the report was not read to the end.
    bool IsIncomplete(NodeIndex node) const {
        const Node& record = At(node);
        return content_->incomplete.contains({record.schema, record.text});
    }

    /// Schema, "**" and 32 hexadecimal digits that no other node has. Only the part before "**" means
    /// something.
    std::string Key(NodeIndex node) const;

    /// The children of a node, the roots for kNoNode.
    std::vector<NodeIndex> Children(NodeIndex node) const;
    std::vector<NodeIndex> Roots() const { return Children(kNoNode); }
    NodeIndex SubtreeEnd(NodeIndex node) const { return At(node).end - first_; }
    int Level(NodeIndex node) const;  ///< 1 for a root.

    /// The first node with exactly this text, of this schema when one is named; kNoNode when there is none.
    NodeIndex FirstOf(std::string_view text, std::string_view schema = {}) const;

    /// The node with all that is below it, the node as its root; texts, schemas and keys stay.
    RecordTree Subtree(NodeIndex node) const;

    /// Whether both are the same tree and not only alike.
    bool operator==(const RecordTree& other) const = default;

  private:
    friend class RecordTreeBuilder;

    struct Node {
        NodeIndex parent;
        TextId text;
        TextId schema;
        NodeIndex end;  ///< Of all that is below it.
    };
    struct Content {
        std::vector<Node> nodes;
        std::unordered_map<std::string, TextId> textIds;
        std::vector<const std::string*> texts;           ///< The map's keys, which stay where they are.
        std::vector<NodeIndex> byText, byTextBegin;      ///< Nodes by their text, and where each text begins.
        std::uint64_t guidHigh = 0, guidLow = 0;         ///< The GUID of node 0.
        std::set<std::pair<TextId, TextId>> incomplete;  ///< Schema and record.
    };

    RecordTree(std::shared_ptr<const Content> content, NodeIndex first, NodeIndex end)
        : content_(std::move(content)), first_(first), end_(end) {}
    const Node& At(NodeIndex node) const { return content_->nodes[first_ + node]; }
    NodeIndex FirstOf(TextId text, NodeIndex begin, NodeIndex end) const;

    std::shared_ptr<const Content> content_;
    NodeIndex first_ = 0, end_ = 0;  ///< Its part of the content.
};

/// Fills a tree from top to bottom.
class RecordTreeBuilder {
  public:
    explicit RecordTreeBuilder(Random& random);

    RecordTree::TextId Intern(std::string_view text);
    /// A root (a schema, parent kNoNode) or a child of a node of the branch added last.
    NodeIndex Add(NodeIndex parent, RecordTree::TextId text);
    NodeIndex Size() const { return static_cast<NodeIndex>(content_->nodes.size()); }
    /// All nodes of this record, whether or not they are there yet.
    void MarkIncomplete(std::string_view schema, std::string_view record);

    RecordTree Complete() &&;

  private:
    std::shared_ptr<RecordTree::Content> content_;
};

/// 32 upper-case hexadecimal digits: 16 bytes of which the first eight are `high` and the rest `low`.
std::string CreateGUID(std::uint64_t high, std::uint64_t low);

}  // namespace norvelis
