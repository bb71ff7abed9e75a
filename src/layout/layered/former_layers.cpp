#include "layout/layered/former_layers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace norvelis::layout {

namespace {

constexpr int kNoRow = -1;

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// Gives each box its row.
class FormerRows {
  public:
    FormerRows(const Graph& graph, const FormerPlaces& former)
        : graph_(graph), former_(former), row_(graph.boxes.size(), kNoRow), linesAt_(graph.boxes.size()) {
        for (std::size_t k = 0; k < graph.lines.size(); ++k) {
            const Line& line = graph.lines[k];
            if (line.from == line.to) continue;
            linesAt_[At(line.from)].push_back(static_cast<int>(k));
            linesAt_[At(line.to)].push_back(static_cast<int>(k));
        }
    }

    std::vector<int> Find() {
        TakeKnown();
        TakeOutNeighbours();
        PlaceOthers();
        CloseGaps();
        return row_;
    }

  private:
    void TakeKnown() {
        std::vector<std::size_t> known;
        std::vector<Rect> boxes;
        for (std::size_t i = 0; i < row_.size(); ++i) {
            if (!former_.centers[i]) continue;
            known.push_back(i);
            boxes.push_back(RectAround(*former_.centers[i], graph_.boxes[i].width, graph_.boxes[i].height));
        }
        const std::vector<int> rows = RowsOf(boxes);
        for (std::size_t k = 0; k < known.size(); ++k) {
            row_[known[k]] = rows[k];
            count_ = std::max(count_, rows[k] + 1);
        }
    }

    /// Boxes of one row that a new line joins: the one with fewer lines, of equals the member, looks for
    /// another.
    void TakeOutNeighbours() {
        for (const auto& [owner, member, width, height] : graph_.lines) {
            if (owner == member || row_[At(owner)] != row_[At(member)]) continue;
            const bool isOwner = linesAt_[At(owner)].size() < linesAt_[At(member)].size();
            row_[At(isOwner ? owner : member)] = kNoRow;
        }
    }

    /// The next is always one with most lines to boxes that have their row.
    void PlaceOthers() {
        while (true) {
            int next = -1, most = -1;
            for (std::size_t i = 0; i < row_.size(); ++i) {
                if (row_[i] != kNoRow) continue;
                const int lines =
                    static_cast<int>(std::count_if(linesAt_[i].begin(), linesAt_[i].end(), [&](int line) {
                        return row_[At(OtherEnd(line, static_cast<int>(i)))] != kNoRow;
                    }));
                if (lines > most) {
                    most = lines;
                    next = static_cast<int>(i);
                }
            }
            if (next < 0) return;
            row_[At(next)] = RowFor(next);
        }
    }

    int OtherEnd(int line, int box) const {
        const Line& ends = graph_.lines[At(line)];
        return ends.from == box ? ends.to : ends.from;
    }

    bool HasNeighbourIn(int box, int row) const {
        return std::any_of(linesAt_[At(box)].begin(), linesAt_[At(box)].end(),
                           [&](int line) { return row_[At(OtherEnd(line, box))] == row; });
    }

    int RowFor(int box) {
        int owners = kNoRow, members = std::numeric_limits<int>::max();
        for (const int line : linesAt_[At(box)]) {
            const int row = row_[At(OtherEnd(line, box))];
            if (row == kNoRow) continue;
            if (graph_.lines[At(line)].to == box) {
                owners = std::max(owners, row);
            } else {
                members = std::min(members, row);
            }
        }
        const bool isOwned = owners != kNoRow;
        if (!isOwned && members == std::numeric_limits<int>::max()) return Insert(count_);
        if (!isOwned) return members > 0 ? members - 1 : Insert(0);
        if (members == owners + 1) return Insert(members);
        int row = owners + 1;
        while (row < count_ && HasNeighbourIn(box, row)) ++row;  // of a cycle
        return row < count_ ? row : Insert(row);
    }

    /// A new row there; the rows from there on move down.
    int Insert(int row) {
        for (int& each : row_)
            if (each >= row) ++each;
        ++count_;
        return row;
    }

    void CloseGaps() {
        std::vector<int> number(At(count_), 0);
        for (const int row : row_) number[At(row)] = 1;
        int used = 0;
        for (int& each : number) each = each > 0 ? used++ : kNoRow;
        for (int& row : row_) row = number[At(row)];
    }

    const Graph& graph_;
    const FormerPlaces& former_;
    std::vector<int> row_;
    std::vector<std::vector<int>> linesAt_;  ///< Of each box, without those from it to itself.
    int count_ = 0;
};

/// Where a path crosses a height; none where it does not.
std::optional<double> CrossingOf(const std::vector<Point>& path, double y) {
    for (std::size_t p = 1; p < path.size(); ++p) {
        const Point a = path[p - 1], b = path[p];
        if ((a.y < y) == (b.y < y)) continue;
        return a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y);
    }
    return std::nullopt;
}

/// Orders the nodes of layers as they were.
class FormerOrder {
  public:
    FormerOrder(const FormerPlaces& former, Layers& layers)
        : former_(former),
          layers_(layers),
          x_(layers.nodes.size()),
          place_(layers.nodes.size()),
          above_(layers.nodes.size()),
          below_(layers.nodes.size()) {
        for (const LayerEdge& edge : layers.edges) {
            below_[At(edge.upper)].emplace_back(edge.lower, edge.weight);
            above_[At(edge.lower)].emplace_back(edge.upper, edge.weight);
        }
    }

    void Apply() {
        FindKnown();
        GuessOthers();
        for (auto& row : layers_.order) {
            std::stable_sort(row.begin(), row.end(), [&](int a, int b) { return *x_[At(a)] < *x_[At(b)]; });
            Number(row);
        }
        Sift();
        KeepSections();
    }

  private:
    using Ends =
        std::vector<std::pair<int, int>>;  ///< Nodes of the next layer and the weights of their edges.

    bool IsBox(int node) const { return layers_.nodes[At(node)].bundle < 0; }

    void FindKnown() {
        const std::vector<std::optional<double>> heights = Heights();
        for (std::size_t i = 0; i < x_.size(); ++i) {
            const LayerNode& node = layers_.nodes[i];
            if (node.bundle < 0) {
                if (former_.centers[i]) x_[i] = former_.centers[i]->x;
            } else if (const auto height = heights[At(node.layer)]) {
                for (const int line : layers_.bundles[At(node.bundle)].lines)
                    if (!x_[i]) x_[i] = CrossingOf(former_.routes[At(line)], *height);
            }
            if (!x_[i]) free_.push_back(static_cast<int>(i));
        }
    }

    /// Where the middle of each row was, to go by most of its boxes; none for a new one.
    std::vector<std::optional<double>> Heights() const {
        std::vector<std::optional<double>> heights;
        for (const auto& row : layers_.order) {
            std::vector<double> middles;
            for (const int node : row)
                if (IsBox(node) && former_.centers[At(node)]) middles.push_back(former_.centers[At(node)]->y);
            std::sort(middles.begin(), middles.end());
            heights.push_back(middles.empty() ? std::nullopt : std::optional(middles[middles.size() / 2]));
        }
        return heights;
    }

    /// In the middle of the ends of lines; one after the other, as far as they become known.
    void GuessOthers() {
        for (bool found = true; found;) {
            found = false;
            for (const int node : free_) {
                if (x_[At(node)]) continue;
                double sum = 0, count = 0;
                for (const Ends* ends : {&above_[At(node)], &below_[At(node)]}) {
                    for (const auto& [end, weight] : *ends) {
                        if (!x_[At(end)]) continue;
                        sum += *x_[At(end)] * weight;
                        count += weight;
                    }
                }
                if (count == 0) continue;
                x_[At(node)] = sum / count;
                found = true;
            }
        }
        for (auto& x : x_)
            if (!x) x = 0;
    }

    void Number(const std::vector<int>& row) {
        for (std::size_t i = 0; i < row.size(); ++i) place_[At(row[i])] = static_cast<int>(i);
    }

    /// How many more lines cross when `left` is left of `right`, both in one row.
    std::int64_t CrossingsOf(int left, int right) const {
        std::int64_t crossings = 0;
        for (const auto* side : {&above_, &below_})
            for (const auto& [a, weightA] : (*side)[At(left)])
                for (const auto& [b, weightB] : (*side)[At(right)])
                    if (place_[At(a)] > place_[At(b)]) crossings += std::int64_t{weightA} * weightB;
        return crossings;
    }

    /// Nodes without a place of before try all places of their rows; of equal ones they take the nearest to
    /// where they are.
    void Sift() {
        constexpr int kRounds = 4;
        for (int round = 0; round < kRounds; ++round) {
            bool moved = false;
            for (const int node : free_) moved = SiftNode(node) || moved;
            if (!moved) break;
        }
    }

    bool SiftNode(int node) {
        std::vector<int>& row = layers_.order[At(layers_.nodes[At(node)].layer)];
        const int from = place_[At(node)];
        std::int64_t least = 0;
        int to = from;
        for (const int step : {-1, 1}) {
            std::int64_t cost = 0;
            for (int at = from + step; at >= 0 && at < static_cast<int>(row.size()); at += step) {
                const int other = row[At(at)];
                const std::int64_t before = CrossingsOf(node, other), after = CrossingsOf(other, node);
                cost += step > 0 ? after - before : before - after;
                if (cost >= least) continue;
                least = cost;
                to = at;
            }
        }
        if (to == from) return false;
        row.erase(row.begin() + from);
        row.insert(row.begin() + to, node);
        Number(row);
        return true;
    }

    /// A bundle keeps its section from row to row until it changes places with another one.
    void KeepSections() {
        int sections = 0;
        std::vector<int> last(layers_.bundles.size(), kNone);  // the node of each bundle in the row before
        for (const auto& row : layers_.order) {
            std::vector<int> passing;
            for (const int node : row)
                if (!IsBox(node)) passing.push_back(node);
            std::vector<bool> changes(passing.size());
            for (std::size_t i = 0; i < passing.size(); ++i)
                for (std::size_t k = 0; k < i; ++k)
                    if (LastOf(last, passing[k]) > LastOf(last, passing[i])) changes[i] = changes[k] = true;
            for (std::size_t i = 0; i < passing.size(); ++i) {
                LayerNode& node = layers_.nodes[At(passing[i])];
                const int before = last[At(node.bundle)];
                node.section = before == kNone || changes[i] ? sections++ : layers_.nodes[At(before)].section;
            }
            std::fill(last.begin(), last.end(), kNone);
            for (const int node : passing) last[At(layers_.nodes[At(node)].bundle)] = node;
        }
    }
    /// The place of the node's bundle in the row before; of one that was not there, the row's end.
    int LastOf(const std::vector<int>& last, int node) const {
        const int before = last[At(layers_.nodes[At(node)].bundle)];
        return before == kNone ? std::numeric_limits<int>::max() : place_[At(before)];
    }

    static constexpr int kNone = -1;

    const FormerPlaces& former_;
    Layers& layers_;
    std::vector<std::optional<double>> x_;
    std::vector<int> place_;
    std::vector<Ends> above_, below_;
    std::vector<int> free_;  ///< Nodes that were not there.
};

}  // namespace

Layers LayersAsBefore(const Graph& graph, const FormerPlaces& former) {
    Layers layers = MakeLayers(graph, FormerRows(graph, former).Find());
    FormerOrder(former, layers).Apply();
    return layers;
}

}  // namespace norvelis::layout
