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
    };

    /// The first blocks are the graph's boxes.
    explicit BlockOrder(const Layers& layers);

    int Size() const { return static_cast<int>(blocks_.size()); }
    const std::vector<End>& Above(int block) const { return blocks_[block].ends[Up]; }
    const std::vector<End>& Below(int block) const { return blocks_[block].ends[Down]; }

    const std::vector<int>& Order() const { return order_; }
    void SetOrder(std::vector<int> order);

    /// Takes each block in turn along the whole order and leaves it where its lines cross least, until a
    /// round saves nothing, `mostRounds` are done or Work() reaches `mostWork`.
    void Sift(int mostRounds, std::int64_t mostWork);

    /// Pairs of blocks looked at so far, as a measure of the time spent.
    std::int64_t Work() const { return work_; }

    /// Orders the nodes of the layers that this was made from.
    void ApplyTo(Layers& layers) const;

  private:
    enum Side { Up, Down };
    struct Block {
        int top = 0, bottom = 0;  ///< Layers.
        int weight = 1;
        std::vector<End> ends[2];  ///< By side, sorted by place.
    };
    void Join(int upper, int lower, int weight);
    void Number(int first, int last);
    void SortEnds(int block);
    std::int64_t SiftBlock(int block);
    std::int64_t Saving(const Block& left, int right);
    std::int64_t Saving(const std::vector<End>& left, const std::vector<End>& right);
    std::int64_t SavingOverPassing(const std::vector<End>& left, int passing);

    std::vector<Block> blocks_;
    std::vector<int> blockOf_;  ///< For each node.
    std::vector<int> order_, place_;
    std::int64_t work_ = 0;
};

}  // namespace norvelis::layout
