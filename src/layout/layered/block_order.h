#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "layout/layered/layers.h"

namespace norvelis::layout {

/// The nodes of all layers as blocks in one order from left to right: a box is a block, and so are the places
/// of a bundle between its boxes. The order of each layer follows from it, so bundles cross each other only
/// next to a box, and long lines can be straight.
///
/// Bachmaier, Brandenburg, Brunner, Hübner: Global k-level crossing reduction (2011).
class BlockOrder {
  public:
    /// A neighbouring block, and how many lines lead to it.
    struct End {
        int block, weight;
        int before = 0;  ///< Lines to the ends that come before it.
    };

    /// The first blocks are the graph's boxes.
    explicit BlockOrder(const Layers& layers);

    int Size() const { return static_cast<int>(blocks_.size()); }
    const std::vector<End>& Above(int block) const { return blocks_[block].ends[Up]; }
    const std::vector<End>& Below(int block) const { return blocks_[block].ends[Down]; }

    const std::vector<int>& Order() const { return order_; }
    void SetOrder(std::vector<int> order);
    /// An order that is as it was when it was last sifted but for a few blocks: Sift() looks at them and
    /// their neighbours alone.
    void SetOrder(std::vector<int> order, const std::vector<int>& moved);

    /// Takes each block in turn along the whole order and leaves it where its lines cross least, and again
    /// those whose neighbours have moved, until none is left, `mostRounds` are done or Work() reaches
    /// `mostWork`.
    void Sift(int mostRounds, std::int64_t mostWork);

    /// Blocks and ends looked at so far, as a measure of the time spent.
    std::int64_t Work() const { return work_; }

    /// Orders the nodes of the layers that this was made from.
    void ApplyTo(Layers& layers) const;

  private:
    enum Side { Up, Down };
    using Ends = std::vector<End>;
    struct Block {
        int top = 0, bottom = 0;  ///< Layers.
        int weight = 1;
        Ends ends[2];  ///< By side, sorted by place.
    };
    void Join(int upper, int lower, int weight);
    void Arrange(std::vector<int> order);
    void Number(int first, int last);
    void SortEnds(int block);
    void Wake(int block);
    bool SiftBlock(int block);
    void Move(int block, int to);
    int LeanOf(const Ends& ends, int place) const;
    std::int64_t Saving(const Block& left, int right);
    std::int64_t Saving(const Ends& left, const Ends& right);

    std::vector<Block> blocks_;
    std::vector<int> blockOf_;  ///< For each node.
    std::vector<int> order_, place_;
    std::vector<std::vector<int>> onLayer_;  ///< The blocks of each layer in their order.
    std::vector<bool> awake_;                ///< Whether the block may have a better place.
    std::int64_t work_ = 0;
};

}  // namespace norvelis::layout
