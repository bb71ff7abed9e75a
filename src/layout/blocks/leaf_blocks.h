#pragma once

#include <vector>

#include "layout/blocks/leaf_groups.h"
#include "layout/blocks/pile.h"
#include "layout/former/former_places.h"
#include "layout/graph/graph.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

/// Twelve leaves of one hub and more make a block of rows, in place of a row without end: before the graph is
/// placed they are folded into piles, afterwards each pile shows its leaves. In layers each row is a pile of
/// its own, led from the one before it, so that rows and layers keep step; in rings the whole block is one.
class LeafBlocks {
  public:
    /// Leaves that have a place of before keep their order there; others follow.
    LeafBlocks(const Graph& graph, const Style& style, const FormerPlaces& former);

    bool IsEmpty() const { return blocks_.empty(); }

    /// The graph with piles in place of leaves, to be placed and routed.
    const Graph& Folded() const { return folded_; }

    /// The places of before of the folded graph: a pile is where its leaves were.
    FormerPlaces FoldedFormer() const;

    /// Whether each pile is where its trunk can lead to it: in layers behind its hub and the piles before it.
    bool CanUnfold(const Placement& folded) const;

    /// The placement of the whole graph from that of the folded one.
    Placement Unfold(Placement folded) const;

  private:
    struct Part {
        Pile pile;
        int box = 0, line = 0;    ///< In the folded graph: the pile, and the line that leads to it.
        std::vector<int> leaves;  ///< In the whole graph.
        std::vector<int> lines;   ///< Likewise.
    };
    struct Block {
        bool above = false;
        std::vector<Part> parts;  ///< Each is led to from the one before.
    };
    /// Where a pile is on the page.
    struct Frame {
        Point middle;
        bool sideways, upwards;
        Point OnPage(Point inPile) const;
        Point InPile(Point onPage) const;
    };
    /// `ratio`: of the width of the block to its height, seen with the hub above it.
    void Fold(LeafGroup group, double ratio);
    /// Puts the leaves in the order of before, each new one into the first row that is not full, and gives
    /// how many are in each row; nothing when none of them was there.
    std::vector<std::size_t> OrderAsBefore(LeafGroup& group) const;
    /// How the block of these leaves was on the page of before, its middle at (0, 0).
    Frame FormerFrame(const std::vector<int>& leaves, const std::vector<int>& lines, bool above) const;
    Frame FrameOf(const Block& block, const Part& part, const Placement& folded, Point entry) const;
    /// The line that leads to the part, from the side of the hub.
    std::vector<Point> LeadTo(const Block& block, const Part& part, const Placement& folded) const;
    void Unfold(const Block& block, const Placement& folded, Placement& whole) const;

    const Graph& graph_;
    const Style& style_;
    const FormerPlaces& former_;
    bool inLayers_, sideways_;
    Graph folded_;
    std::vector<int> boxOf_, lineOf_;  ///< For each box and line of the whole graph; -1 when folded.
    std::vector<Block> blocks_;
};

}  // namespace norvelis::layout
