#include "drawing/layout/crossing_reduction.h"

#include <algorithm>
#include <array>
#include <limits>
#include <random>

namespace norvelis::layout {

namespace {

struct End {
    int node, weight;
};

struct Weighted {
    int place, weight;
};

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

/// Crossings between two neighbouring nodes' lines to one side when the node of `left` stands left: pairs of ends out
/// of order. Both lists are sorted by place.
std::int64_t CrossingsOf(const std::vector<Weighted>& left, const std::vector<Weighted>& right) {
    std::int64_t crossings = 0, passed = 0;
    auto r = right.begin();
    for (const Weighted& l : left) {
        while (r != right.end() && r->place < l.place) passed += r++->weight;
        crossings += passed * l.weight;
    }
    return crossings;
}

class Reducer {
  public:
    explicit Reducer(Layers& layers);
    void Run();

  private:
    using Order = std::vector<std::vector<int>>;
    enum Side { Above, Below };

    std::int64_t Crossings();
    void Number(int layer);
    void NumberAll();
    void StartFrom(int first);
    bool SortByBarycentre(int layer, Side fixed, bool turnEquals);
    void Sweep(bool down, bool turnEquals);
    void SweepUntilSettled();
    std::int64_t SiftLayer(int layer);
    void SiftUntilSettled();
    void Shake();
    void Keep();

    Layers& layers_;
    std::vector<std::vector<End>> ends_[2];  ///< By side, for each node its neighbours above or below.
    std::vector<int> place_;
    AccumulatorTree tree_;
    Order best_;
    std::int64_t fewest_ = std::numeric_limits<std::int64_t>::max();
    std::int64_t work_ = 0;
    std::mt19937 chance_{20};
};

Reducer::Reducer(Layers& layers) : layers_(layers), place_(layers.nodes.size()) {
    ends_[Above].resize(layers.nodes.size());
    ends_[Below].resize(layers.nodes.size());
    for (const LayerEdge& edge : layers.edges) {
        ends_[Below][edge.upper].push_back({edge.lower, edge.weight});
        ends_[Above][edge.lower].push_back({edge.upper, edge.weight});
    }
    NumberAll();
}

void Reducer::Number(int layer) {
    int place = 0;
    for (const int node : layers_.order[layer]) place_[node] = place++;
}

void Reducer::NumberAll() {
    for (std::size_t layer = 0; layer < layers_.order.size(); ++layer) Number(static_cast<int>(layer));
}

std::int64_t Reducer::Crossings() {
    std::int64_t crossings = 0;
    std::vector<Weighted> ends;
    for (std::size_t layer = 0; layer + 1 < layers_.order.size(); ++layer) {
        tree_.Reset(layers_.order[layer + 1].size());
        std::int64_t total = 0;
        for (const int node : layers_.order[layer]) {
            ends.clear();
            for (const End& end : ends_[Below][node]) ends.push_back({place_[end.node], end.weight});
            for (const Weighted& end : ends) crossings += (total - tree_.UpTo(end.place)) * end.weight;
            for (const Weighted& end : ends) {
                tree_.Add(end.place, end.weight);
                total += end.weight;
            }
        }
    }
    work_ += static_cast<std::int64_t>(8 * layers_.edges.size());
    return crossings;
}

/// Orders each layer as a breadth-first walk from one node meets its nodes: lines of one neighbourhood stay together.
void Reducer::StartFrom(int first) {
    for (auto& layer : layers_.order) layer.clear();
    std::vector<bool> seen(layers_.nodes.size());
    std::vector<int> queue;
    const auto meet = [&](int node) {
        if (seen[node]) return;
        seen[node] = true;
        queue.push_back(node);
        layers_.order[layers_.nodes[node].layer].push_back(node);
    };
    meet(first);
    for (std::size_t at = 0; at < queue.size(); ++at) {
        const int node = queue[at];
        for (const Side side : {Below, Above})
            for (const End& end : ends_[side][node]) meet(end.node);
    }
    for (std::size_t node = 0; node < layers_.nodes.size(); ++node) meet(static_cast<int>(node));
    NumberAll();
}

/// Nodes without ends on the fixed side keep their places. Equal nodes may be turned around, which frees orders that
/// are stuck.
bool Reducer::SortByBarycentre(int layer, Side fixed, bool turnEquals) {
    std::vector<std::pair<double, int>> movable;
    std::vector<int>& order = layers_.order[layer];
    for (const int node : order) {
        const auto& ends = ends_[fixed][node];
        if (ends.empty()) continue;
        double sum = 0, weight = 0;
        for (const End& end : ends) {
            sum += static_cast<double>(place_[end.node]) * end.weight;
            weight += end.weight;
        }
        movable.emplace_back(sum / weight, node);
        work_ += static_cast<std::int64_t>(ends.size());
    }
    if (turnEquals) std::reverse(movable.begin(), movable.end());
    std::stable_sort(movable.begin(), movable.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    work_ += static_cast<std::int64_t>(6 * order.size());
    auto next = movable.begin();
    bool changed = false;
    for (int& node : order) {
        if (ends_[fixed][node].empty()) continue;
        changed |= node != next->second;
        node = next++->second;
    }
    if (changed) Number(layer);
    return changed;
}

void Reducer::Sweep(bool down, bool turnEquals) {
    const int count = static_cast<int>(layers_.order.size());
    if (down) {
        for (int layer = 1; layer < count; ++layer) SortByBarycentre(layer, Above, turnEquals);
    } else {
        for (int layer = count - 2; layer >= 0; --layer) SortByBarycentre(layer, Below, turnEquals);
    }
}

void Reducer::Keep() {
    const std::int64_t crossings = Crossings();
    if (crossings >= fewest_) return;
    fewest_ = crossings;
    best_ = layers_.order;
}

void Reducer::SweepUntilSettled() {
    constexpr int patience = 4, most = 40;
    std::int64_t fewest = Crossings();
    Order order = layers_.order;
    int idle = 0;
    for (int round = 0; round < most && idle < patience; ++round) {
        Sweep(round % 2 == 0, round % 4 >= 2);
        const std::int64_t crossings = Crossings();
        ++idle;
        if (crossings < fewest) {
            fewest = crossings;
            order = layers_.order;
            idle = 0;
        }
    }
    layers_.order = std::move(order);
    NumberAll();
}

/// Takes each node along its whole layer and leaves it where it crosses least. Returns the crossings saved.
std::int64_t Reducer::SiftLayer(int layer) {
    std::vector<int>& order = layers_.order[layer];
    const int count = static_cast<int>(order.size());
    if (count < 2) return 0;
    std::vector<std::vector<Weighted>> places[2];
    std::vector<int> nodes = order;
    std::vector<int> index(count);  // at each place of the layer, the index into `nodes`
    for (int i = 0; i < count; ++i) index[i] = i;
    for (const Side side : {Above, Below}) {
        places[side].resize(count);
        for (int i = 0; i < count; ++i) {
            for (const End& end : ends_[side][nodes[i]]) places[side][i].push_back({place_[end.node], end.weight});
            std::sort(places[side][i].begin(), places[side][i].end(),
                      [](const Weighted& a, const Weighted& b) { return a.place < b.place; });
        }
    }
    // What it saves that node a, left of b, goes to the right of it.
    const auto saving = [&](int a, int b) {
        std::int64_t sum = 0;
        for (const Side side : {Above, Below}) {
            const auto &x = places[side][a], &y = places[side][b];
            if (x.empty() || y.empty()) continue;
            work_ += static_cast<std::int64_t>(x.size() + y.size());
            if (x.back().place <= y.front().place) {
                if (x.size() == 1 && y.size() == 1 && x.back().place == y.front().place) continue;
                sum -= CrossingsOf(y, x);
            } else if (y.back().place <= x.front().place) {
                sum += CrossingsOf(x, y);
            } else {
                sum += CrossingsOf(x, y) - CrossingsOf(y, x);
            }
        }
        work_ += 4;
        return sum;
    };
    std::int64_t saved = 0;
    for (int i = 0; i < count; ++i) {
        int at = static_cast<int>(std::find(index.begin(), index.end(), i) - index.begin());
        const int start = at;
        std::int64_t sum = 0, best = 0;
        int bestAt = at;
        for (int k = at + 1; k < count; ++k) {
            sum += saving(i, index[k]);
            if (sum > best) best = sum, bestAt = k;
        }
        sum = 0;
        for (int k = at - 1; k >= 0; --k) {
            sum += saving(index[k], i);
            if (sum > best) best = sum, bestAt = k;
        }
        if (bestAt == start) continue;
        saved += best;
        index.erase(index.begin() + start);
        index.insert(index.begin() + bestAt, i);
    }
    if (saved > 0) {
        for (int i = 0; i < count; ++i) order[i] = nodes[index[i]];
        Number(layer);
    }
    return saved;
}

void Reducer::SiftUntilSettled() {
    constexpr int most = 12;
    const int count = static_cast<int>(layers_.order.size());
    for (int round = 0; round < most; ++round) {
        std::int64_t saved = 0;
        for (int i = 0; i < count; ++i) saved += SiftLayer(round % 2 == 0 ? i : count - 1 - i);
        if (saved == 0) return;
    }
}

/// Moves some nodes anywhere on their layers.
void Reducer::Shake() {
    layers_.order = best_;
    for (auto& order : layers_.order) {
        if (order.size() < 2) continue;
        const std::size_t moves = 1 + order.size() / 8;
        for (std::size_t i = 0; i < moves; ++i) {
            const std::size_t from = chance_() % order.size(), to = chance_() % order.size();
            const int node = order[from];
            order.erase(order.begin() + static_cast<std::ptrdiff_t>(from));
            order.insert(order.begin() + static_cast<std::ptrdiff_t>(to), node);
        }
    }
    NumberAll();
}

void Reducer::Run() {
    constexpr std::int64_t mostWork = 300'000'000;
    constexpr int starts = 8, mostShakes = 60;
    const std::size_t boxes = layers_.nodes.size();
    for (int start = 0; start < starts && fewest_ > 0 && work_ < mostWork / 2; ++start) {
        StartFrom(static_cast<int>(start == 0 ? 0 : chance_() % boxes));
        SweepUntilSettled();
        Keep();
        SiftUntilSettled();
        Keep();
    }
    for (int shake = 0; shake < mostShakes && fewest_ > 0 && work_ < mostWork; ++shake) {
        Shake();
        SweepUntilSettled();
        SiftUntilSettled();
        Keep();
    }
    layers_.order = best_;
}

}  // namespace

std::int64_t CountCrossings(const Layers& layers) {
    std::vector<int> place(layers.nodes.size());
    for (const auto& layer : layers.order)
        for (std::size_t i = 0; i < layer.size(); ++i) place[layer[i]] = static_cast<int>(i);
    std::vector<LayerEdge> edges = layers.edges;
    const auto key = [&](const LayerEdge& edge) {
        return std::array{layers.nodes[edge.upper].layer, place[edge.upper], place[edge.lower]};
    };
    std::sort(edges.begin(), edges.end(),
              [&](const LayerEdge& a, const LayerEdge& b) { return key(a) < key(b); });
    AccumulatorTree tree;
    std::int64_t crossings = 0, total = 0;
    int layer = -1;
    for (const LayerEdge& edge : edges) {
        if (layers.nodes[edge.upper].layer != layer) {
            layer = layers.nodes[edge.upper].layer;
            tree.Reset(layers.order[layer + 1].size());
            total = 0;
        }
        crossings += (total - tree.UpTo(place[edge.lower])) * edge.weight;
        tree.Add(place[edge.lower], edge.weight);
        total += edge.weight;
    }
    return crossings;
}

void ReduceCrossings(Layers& layers) {
    if (!layers.nodes.empty()) Reducer(layers).Run();
}

}  // namespace norvelis::layout
