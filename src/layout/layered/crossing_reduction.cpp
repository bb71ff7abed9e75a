#include "layout/layered/crossing_reduction.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

#include "layout/layered/block_order.h"
#include "layout/layered/start_orders.h"

namespace norvelis::layout {

namespace {

/// Sums over places, for counting as they come.
class AccumulatorTree {
  public:
    void Reset(std::size_t places) { sums_.assign(places + 1, 0); }
    void Add(int place, std::int64_t weight) {
        for (auto i = static_cast<std::size_t>(place) + 1; i < sums_.size(); i += i & -i) sums_[i] += weight;
    }
    /// The sum over all places up to this one.
    std::int64_t UpTo(int place) const {
        std::int64_t sum = 0;
        for (auto i = static_cast<std::size_t>(place) + 1; i > 0; i -= i & -i) sum += sums_[i];
        return sum;
    }

  private:
    std::vector<std::int64_t> sums_;
};

class Reducer {
  public:
    Reducer(Layers& layers, Effort effort)
        : layers_(layers),
          blocks_(layers),
          mostWork_((700'000 + 3'500 * static_cast<std::int64_t>(blocks_.Size())) /
                    (effort == Effort::Trial ? 16 : 1)) {}

    void Run() {
        constexpr int kStarts = 12, kUntilSettled = 30, kShakeRounds = 2, kPatience = 300;
        blocks_.SetOrder(DepthFirstOrder(blocks_, 0));
        KeepIfBest();
        for (int start = 1; start < kStarts && fewest_ > 0 && blocks_.Work() < mostWork_ / 2; ++start) {
            blocks_.SetOrder(StartOrder(start));
            blocks_.Sift(kUntilSettled, mostWork_);
            KeepIfBest();
        }
        for (int idle = 0; idle < kPatience && fewest_ > 0 && blocks_.Work() < mostWork_; ++idle) {
            if (Below(2) == 0) {
                ReverseAPart();
            } else {
                MoveANeighbourhood();
            }
            blocks_.Sift(kShakeRounds, mostWork_);
            if (KeepIfBest()) idle = 0;
        }
        blocks_.SetOrder(best_);
        blocks_.Sift(kUntilSettled, mostWork_ + mostWork_ / 4);
        blocks_.ApplyTo(layers_);
    }

  private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<std::uint32_t>(limit)); }

    std::vector<int> StartOrder(int start) {
        if (start % 3 == 0) return BreadthFirstOrder(blocks_, Below(blocks_.Size()));
        return SpectralOrder(blocks_, start % 3 == 1 ? 200 + 100 * start : 30 + 10 * start, random_);
    }

    int SizeOfShake() { return std::min(blocks_.Size(), 1 + Below(std::max(1, blocks_.Size() / 8))); }

    void ReverseAPart() {
        std::vector<int> order = best_;
        const int size = SizeOfShake();
        const auto first = order.begin() + Below(blocks_.Size() - size + 1);
        std::reverse(first, first + size);
        const std::vector<int> reversed(first, first + size);
        blocks_.SetOrder(std::move(order), reversed);
    }

    void MoveANeighbourhood() {
        std::vector<int> near = BreadthFirstOrder(blocks_, Below(blocks_.Size()));
        near.resize(SizeOfShake());
        std::vector<bool> isNear(blocks_.Size());
        for (const int block : near) isNear[block] = true;
        std::vector<int> moved, order;
        for (const int block : best_) (isNear[block] ? moved : order).push_back(block);
        if (Below(2) == 0) std::reverse(moved.begin(), moved.end());
        order.insert(order.begin() + Below(static_cast<int>(order.size()) + 1), moved.begin(), moved.end());
        blocks_.SetOrder(std::move(order), moved);
    }

    /// Whether this is better than all before; one as good is kept too, to move on from there.
    bool KeepIfBest() {
        blocks_.ApplyTo(layers_);
        const std::int64_t crossings = CountCrossings(layers_);
        if (crossings > fewest_) return false;
        const bool isBetter = crossings < fewest_;
        fewest_ = crossings;
        best_ = blocks_.Order();
        return isBetter;
    }

    Layers& layers_;
    BlockOrder blocks_;
    std::int64_t mostWork_;
    std::vector<int> best_;
    std::int64_t fewest_ = std::numeric_limits<std::int64_t>::max();
    std::mt19937 random_{20};
};

}  // namespace
std::int64_t CountCrossings(const Layers& layers) {
    std::vector<int> place(layers.nodes.size()), first(layers.nodes.size() + 1);
    for (const auto& layer : layers.order)
        for (std::size_t i = 0; i < layer.size(); ++i) place[layer[i]] = static_cast<int>(i);
    for (const LayerEdge& edge : layers.edges) ++first[edge.upper + 1];
    std::partial_sum(first.begin(), first.end(), first.begin());
    std::vector<LayerEdge> edges(layers.edges.size());  // by upper node
    std::vector<int> next = first;
    for (const LayerEdge& edge : layers.edges) edges[next[edge.upper]++] = edge;
    AccumulatorTree tree;
    std::int64_t crossings = 0;
    for (std::size_t layer = 0; layer + 1 < layers.order.size(); ++layer) {
        tree.Reset(layers.order[layer + 1].size());
        std::int64_t total = 0;
        for (const int node : layers.order[layer]) {
            for (int i = first[node]; i < first[node + 1]; ++i)
                crossings += (total - tree.UpTo(place[edges[i].lower])) * edges[i].weight;
            for (int i = first[node]; i < first[node + 1]; ++i) {
                tree.Add(place[edges[i].lower], edges[i].weight);
                total += edges[i].weight;
            }
        }
    }
    return crossings;
}

void ReduceCrossings(Layers& layers, Effort effort) {
    if (!layers.nodes.empty()) Reducer(layers, effort).Run();
}

}  // namespace norvelis::layout
