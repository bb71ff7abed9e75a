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
    onLayer_.resize(layers.order.size());
    std::vector<int> order(blocks_.size());
    std::iota(order.begin(), order.end(), 0);
    SetOrder(std::move(order));
}

void BlockOrder::Join(int upper, int lower, int weight) {
    blocks_[upper].ends[Down].push_back({lower, weight});
    blocks_[lower].ends[Up].push_back({upper, weight});
}

void BlockOrder::SetOrder(std::vector<int> order) {
    awake_.assign(order.size(), true);
    Arrange(std::move(order));
}

void BlockOrder::SetOrder(std::vector<int> order, const std::vector<int>& moved) {
    awake_.assign(order.size(), false);
    for (const int block : moved) {
        awake_[block] = true;
        Wake(block);
    }
    Arrange(std::move(order));
}

void BlockOrder::Arrange(std::vector<int> order) {
    order_ = std::move(order);
    place_.resize(order_.size());
    Number(0, Size() - 1);
    for (auto& layer : onLayer_) layer.clear();
    for (const int block : order_) {
        SortEnds(block);
        for (int layer = blocks_[block].top; layer <= blocks_[block].bottom; ++layer)
            onLayer_[layer].push_back(block);
    }
}

void BlockOrder::Number(int first, int last) {
    for (int at = first; at <= last; ++at) place_[order_[at]] = at;
}

/// By insertion: mostly one end is out of order.
void BlockOrder::SortEnds(int block) {
    for (Ends& ends : blocks_[block].ends) {
        for (std::size_t i = 1; i < ends.size(); ++i) {
            const End end = ends[i];
            std::size_t at = i;
            for (; at > 0 && place_[ends[at - 1].block] > place_[end.block]; --at) ends[at] = ends[at - 1];
            ends[at] = end;
        }
        for (std::size_t i = 1; i < ends.size(); ++i)
            ends[i].before = ends[i - 1].before + ends[i - 1].weight;
        if (!ends.empty()) ends.front().before = 0;
    }
}

/// The neighbours of a block that has moved.
void BlockOrder::Wake(int block) {
    for (const Ends& ends : blocks_[block].ends)
        for (const End& end : ends) awake_[end.block] = true;
}

void BlockOrder::Sift(int mostRounds, std::int64_t mostWork) {
    for (int round = 0; round < mostRounds; ++round) {
        const std::vector<int> blocks = order_;
        bool moved = false;
        for (const int block : blocks) {
            if (!awake_[block]) continue;
            if (work_ >= mostWork) return;
            awake_[block] = false;
            moved |= SiftBlock(block);
        }
        if (!moved) return;
    }
}

/// Whether it has moved.
bool BlockOrder::SiftBlock(int block) {
    const Block& moved = blocks_[block];
    // Only those that share a layer with it can change their crossings.
    const bool isOnOneLayer = moved.top == moved.bottom;
    const std::vector<int>& others = isOnOneLayer ? onLayer_[moved.top] : order_;
    const auto here = isOnOneLayer
                          ? std::lower_bound(others.begin(), others.end(), place_[block],
                                             [&](int other, int place) { return place_[other] < place; })
                          : others.begin() + place_[block];
    int to = block;  // the block whose place it takes
    std::int64_t sum = 0, best = 0;
    for (auto other = here + 1; other != others.end(); ++other)
        if ((sum += Saving(moved, *other)) > best) best = sum, to = *other;
    sum = 0;
    for (auto other = here; other != others.begin();)
        if ((sum -= Saving(moved, *--other)) > best) best = sum, to = *other;
    work_ += static_cast<std::int64_t>(others.size()) / (isOnOneLayer ? 2 : 16);
    if (to == block) return false;
    Move(block, place_[to]);
    Wake(block);
    return true;
}

void BlockOrder::Move(int block, int to) {
    const int from = place_[block];
    const auto place = [&](int at) { return order_.begin() + at; };
    if (to > from) {
        std::rotate(place(from), place(from + 1), place(to + 1));
    } else {
        std::rotate(place(to), place(from), place(from + 1));
    }
    Number(std::min(from, to), std::max(from, to));
    for (int layer = blocks_[block].top; layer <= blocks_[block].bottom; ++layer) {
        std::vector<int>& row = onLayer_[layer];
        auto at = std::find(row.begin(), row.end(), block);
        for (; at + 1 != row.end() && place_[at[1]] < to; ++at) std::swap(at[0], at[1]);
        for (; at != row.begin() && place_[at[-1]] > to; --at) std::swap(at[-1], at[0]);
    }
    for (const Ends& ends : blocks_[block].ends)
        for (const End& end : ends) SortEnds(end.block);
}

/// Lines to ends behind a place less lines to ends before it.
int BlockOrder::LeanOf(const Ends& ends, int place) const {
    constexpr std::size_t kFew = 6;
    int lean = 0;
    if (ends.size() <= kFew) {
        for (const End& end : ends) {
            const int at = place_[end.block];
            lean += (at > place ? end.weight : 0) - (at < place ? end.weight : 0);
        }
        return lean;
    }
    const int all = ends.back().before + ends.back().weight;
    const auto at = std::lower_bound(ends.begin(), ends.end(), place,
                                     [&](const End& end, int wanted) { return place_[end.block] < wanted; });
    if (at == ends.end()) return -all;
    const int here = place_[at->block] == place ? at->weight : 0;
    return all - 2 * at->before - here;
}

/// What it saves that a block right before another goes right behind it. Only where one of the two ends may
/// lines change their crossings.
std::int64_t BlockOrder::Saving(const Block& left, int rightBlock) {
    const Block& right = blocks_[rightBlock];
    if (left.bottom < right.top || right.bottom < left.top) return 0;
    const int place = place_[rightBlock];
    // Where only one of them ends, the other passes on through the layer that the ends lead to.
    const auto savingAt = [&](Side side, int leftEnd, int rightEnd) {  // how far each reaches to this side
        if (leftEnd == rightEnd) return Saving(left.ends[side], right.ends[side]);
        ++work_;
        if (leftEnd < rightEnd) return std::int64_t{LeanOf(left.ends[side], place)} * right.weight;
        return -std::int64_t{LeanOf(right.ends[side], place)} * left.weight;
    };
    return savingAt(Up, -left.top, -right.top) + savingAt(Down, left.bottom, right.bottom);
}

/// Both lists lead to one layer: pairs that cross less pairs that would cross.
std::int64_t BlockOrder::Saving(const Ends& left, const Ends& right) {
    const bool rightIsShorter = right.size() < left.size();
    const Ends &shorter = rightIsShorter ? right : left, &longer = rightIsShorter ? left : right;
    std::int64_t saving = 0;
    for (const End& end : shorter) saving += end.weight * LeanOf(longer, place_[end.block]);
    work_ += 1 + static_cast<std::int64_t>(shorter.size());
    return rightIsShorter ? saving : -saving;
}

void BlockOrder::ApplyTo(Layers& layers) const {
    for (auto& layer : layers.order)
        std::sort(layer.begin(), layer.end(),
                  [&](int a, int b) { return place_[blockOf_[a]] < place_[blockOf_[b]]; });
}

}  // namespace norvelis::layout
