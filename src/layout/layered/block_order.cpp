#include "layout/layered/block_order.h"

#include <algorithm>
#include <numeric>

namespace norvelis::layout {

BlockOrder::BlockOrder(const Layers& layers) : blockOf_(layers.nodes.size()) {
    for (std::size_t node = 0; node < layers.nodes.size() && layers.nodes[node].bundle < 0; ++node) {
        blockOf_[node] = static_cast<int>(node);
        blocks_.push_back({layers.nodes[node].layer, layers.nodes[node].layer, 1, {}});
    }
    for (const Bundle& bundle : layers.bundles) {
        const int weight = static_cast<int>(bundle.lines.size());
        if (bundle.chain.empty()) {
            Join(bundle.upper, bundle.lower, weight);
            continue;
        }
        const int block = Size();
        for (const int node : bundle.chain) blockOf_[node] = block;
        blocks_.push_back(
            {layers.nodes[bundle.chain.front()].layer, layers.nodes[bundle.chain.back()].layer, weight, {}});
        Join(bundle.upper, block, weight);
        Join(block, bundle.lower, weight);
    }
    std::vector<int> order(blocks_.size());
    std::iota(order.begin(), order.end(), 0);
    SetOrder(std::move(order));
}

void BlockOrder::Join(int upper, int lower, int weight) {
    blocks_[upper].ends[Down].push_back({lower, weight});
    blocks_[lower].ends[Up].push_back({upper, weight});
}

void BlockOrder::SetOrder(std::vector<int> order) {
    order_ = std::move(order);
    place_.resize(order_.size());
    Number(0, Size() - 1);
    for (int block = 0; block < Size(); ++block) SortEnds(block);
}

void BlockOrder::Number(int first, int last) {
    for (int at = first; at <= last; ++at) place_[order_[at]] = at;
}

/// By insertion: mostly one end is out of order.
void BlockOrder::SortEnds(int block) {
    for (auto& ends : blocks_[block].ends) {
        for (std::size_t i = 1; i < ends.size(); ++i) {
            const End end = ends[i];
            std::size_t at = i;
            for (; at > 0 && place_[ends[at - 1].block] > place_[end.block]; --at) ends[at] = ends[at - 1];
            ends[at] = end;
        }
    }
}

void BlockOrder::Sift(int mostRounds, std::int64_t mostWork) {
    for (int round = 0; round < mostRounds; ++round) {
        const std::vector<int> blocks = order_;
        std::int64_t saved = 0;
        for (const int block : blocks) {
            if (work_ >= mostWork) return;
            saved += SiftBlock(block);
        }
        if (saved == 0) return;
    }
}

std::int64_t BlockOrder::SiftBlock(int block) {
    const Block& moved = blocks_[block];
    const int from = place_[block];
    int to = from;
    std::int64_t sum = 0, best = 0;
    for (int at = from + 1; at < Size(); ++at)
        if ((sum += Saving(moved, order_[at])) > best) best = sum, to = at;
    sum = 0;
    for (int at = from - 1; at >= 0; --at)
        if ((sum -= Saving(moved, order_[at])) > best) best = sum, to = at;
    work_ += Size() / 16;
    if (to == from) return 0;

    const auto place = [&](int at) { return order_.begin() + at; };
    if (to > from) {
        std::rotate(place(from), place(from + 1), place(to + 1));
    } else {
        std::rotate(place(to), place(from), place(from + 1));
    }
    Number(std::min(from, to), std::max(from, to));
    for (const auto& ends : moved.ends)
        for (const End& end : ends) SortEnds(end.block);
    return best;
}

/// What it saves that a block right before another goes right behind it. Only where one of the two ends may
/// lines change their crossings.
std::int64_t BlockOrder::Saving(const Block& left, int rightBlock) {
    const Block& right = blocks_[rightBlock];
    if (left.bottom < right.top || right.bottom < left.top) return 0;
    const auto savingAt = [&](Side side, int leftEnd, int rightEnd) {  // how far each reaches to this side
        if (leftEnd == rightEnd) return Saving(left.ends[side], right.ends[side]);
        if (leftEnd < rightEnd) return SavingOverPassing(left.ends[side], rightBlock) * right.weight;
        return -SavingOverPassing(right.ends[side], rightBlock) * left.weight;
    };
    return savingAt(Up, -left.top, -right.top) + savingAt(Down, left.bottom, right.bottom);
}

/// Both lists lead to one layer: pairs that cross less pairs that would cross.
std::int64_t BlockOrder::Saving(const std::vector<End>& left, const std::vector<End>& right) {
    std::int64_t saving = 0, before = 0, upTo = 0, all = 0;
    for (const End& end : right) all += end.weight;
    auto b = right.begin(), u = right.begin();
    for (const End& end : left) {
        const int place = place_[end.block];
        for (; b != right.end() && place_[b->block] < place; ++b) before += b->weight;
        for (; u != right.end() && place_[u->block] <= place; ++u) upTo += u->weight;
        saving += end.weight * (before - (all - upTo));
    }
    work_ += static_cast<std::int64_t>(left.size() + right.size());
    return saving;
}

/// The other block passes on through the layer that the ends lead to.
std::int64_t BlockOrder::SavingOverPassing(const std::vector<End>& ends, int passing) {
    std::int64_t saving = 0;
    for (const End& end : ends) saving += place_[end.block] > place_[passing] ? end.weight : -end.weight;
    work_ += static_cast<std::int64_t>(ends.size());
    return saving;
}

void BlockOrder::ApplyTo(Layers& layers) const {
    for (auto& layer : layers.order)
        std::sort(layer.begin(), layer.end(),
                  [&](int a, int b) { return place_[blockOf_[a]] < place_[blockOf_[b]]; });
}

}  // namespace norvelis::layout
