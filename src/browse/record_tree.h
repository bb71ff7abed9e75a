#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/random.h"

namespace norvelis {

using NodeIndex = std::uint32_t;
inline constexpr NodeIndex kNoNode = UINT32_MAX;

/// Schemas, their entry records, and below each record its members, to any depth. A network of sets unfolds
/// to far more nodes than it has records, so a node is a few numbers: its parent, its text, its schema.
///
/// Nodes are numbered from 0 in order of creation, each parent followed by all that is below it, so a subtree
/// is a range of numbers. Fill with Add, then call Complete; the functions after it answer for a completed
/// tree only.
class RecordTree {
  public:
    using TextId = std::uint32_t;

    explicit RecordTree(Random& random);
    RecordTree(RecordTree&&) = default;
    RecordTree& operator=(RecordTree&&) = default;

    TextId Intern(std::string_view text);
    /// A root (a schema, parent kNoNode) or a child of a node of the branch added last.
    NodeIndex Add(NodeIndex parent, TextId text);
    void Complete();

    NodeIndex Size() const { return static_cast<NodeIndex>(nodes_.size()); }
    NodeIndex Parent(NodeIndex node) const { return nodes_[node].parent; }
    TextId TextIdOf(NodeIndex node) const { return nodes_[node].text; }
    const std::string& Text(NodeIndex node) const { return *texts_[nodes_[node].text]; }
    const std::string& TextOf(TextId text) const { return *texts_[text]; }
    std::size_t TextCount() const { return texts_.size(); }
    const std::string& Schema(NodeIndex node) const { return *texts_[nodes_[node].schema]; }

    /// Schema, "**" and 32 hexadecimal digits that no other node has. Only the part before "**" means
    /// something.
    std::string Key(NodeIndex node) const;

    std::span<const NodeIndex> Roots() const { return Children(kNoNode); }
    std::span<const NodeIndex> Children(NodeIndex node) const;
    NodeIndex Row(NodeIndex node) const { return rows_[node]; }  ///< Its place among its siblings, from 0.
    NodeIndex SubtreeEnd(NodeIndex node) const { return ends_[node]; }
    int Level(NodeIndex node) const;  ///< 1 for a root.

    /// All nodes with exactly this text, in order of their numbers.
    std::span<const NodeIndex> NodesOf(std::string_view text) const;

    /// A copy of the node with all that is below it, the node as its root; texts, schemas and keys stay.
    RecordTree Subtree(NodeIndex node) const;

  private:
    struct Node {
        NodeIndex parent;
        TextId text;
        TextId schema;
    };

    RecordTree() = default;

    std::vector<Node> nodes_;
    std::unordered_map<std::string, TextId> textIds_;
    std::vector<const std::string*> texts_;  ///< The map's keys, which stay where they are.

    // Lists of nodes by parent and by text, each one array with the places where the lists begin.
    std::vector<NodeIndex> children_, childrenBegin_, rows_, ends_, byText_, byTextBegin_;

    std::uint64_t guidHigh_ = 0, guidLow_ = 0;  ///< The GUID of node 0.
};

/// 32 upper-case hexadecimal digits: 16 bytes of which the first eight are `high` and the rest `low`.
std::string CreateGUID(std::uint64_t high, std::uint64_t low);

}  // namespace norvelis
