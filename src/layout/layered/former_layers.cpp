#include "layout/layered/former_layers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <utility>

#include "layout/layered/difference_program.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// What was connected before. A new line between two of these parts says nothing of how they were to each
/// other.
std::vector<int> FormerParts(const Graph& graph, const FormerPlaces& former) {
    Graph before{graph.boxes, {}};
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        if (former.centers[At(line.from)] && former.centers[At(line.to)] && !former.routes[k].empty())
            before.lines.push_back(line);
    }
    std::vector<int> parts(graph.boxes.size());
    int number = 0;
    for (const Component& part : ComponentsOf(before)) {
        for (const int box : part.boxes) parts[At(box)] = number;
        ++number;
    }
    return parts;
}

/// Ranks for rows of before, of which each part keeps its own, one below the other. Parts may slide along
/// each other and rows move apart, so that lines to new boxes and between parts lead down as well.
class FormerRanks {
  public:
    FormerRanks(const Graph& graph, const FormerPlaces& former, const std::vector<int>& parts)
        : graph_(graph), row_(graph.boxes.size(), kNoRow) {
        FindRows(former, parts);
        TakeOutNeighbours();
        for (int& row : row_)
            if (row == kNoRow) row = NewRow();
    }

    std::vector<int> Find() {
        constexpr int kTogether = 1000;  // rather than one line more that is short
        DifferenceProgram program(static_cast<int>(below_.size()));
        const auto keep = [&](int upper, int lower, int weight) {
            program.Keep(upper, lower, 1);
            program.Shorten(upper, lower, weight);
        };
        for (std::size_t upper = 0; upper < below_.size(); ++upper)
            for (const int lower : below_[upper]) keep(static_cast<int>(upper), lower, kTogether);
        for (const Line& line : graph_.lines) {
            int upper = row_[At(line.from)], lower = row_[At(line.to)];
            if (upper == lower || (partOf_[At(upper)] >= 0 && partOf_[At(upper)] == partOf_[At(lower)]))
                continue;
            if (LeadsTo(lower, upper)) std::swap(upper, lower);  // a cycle
            below_[At(upper)].push_back(lower);
            keep(upper, lower, 1);
        }
        const std::vector<std::int64_t> solution = program.Solve();
        std::vector<int> ranks;
        for (const int row : row_) ranks.push_back(static_cast<int>(solution[At(row)]));
        return ranks;
    }

  private:
    static constexpr int kNoRow = -1;

    int NewRow(int part = -1) {
        below_.emplace_back();
        partOf_.push_back(part);
        return static_cast<int>(below_.size()) - 1;
    }

    void FindRows(const FormerPlaces& former, const std::vector<int>& parts) {
        std::vector<std::size_t> known;
        std::vector<Rect> boxes;
        for (std::size_t i = 0; i < row_.size(); ++i) {
            if (!former.centers[i]) continue;
            known.push_back(i);
            boxes.push_back(RectAround(*former.centers[i], graph_.boxes[i].width, graph_.boxes[i].height));
        }
        const std::vector<int> heights = RowsOf(boxes);
        std::map<std::pair<int, int>, int> rows;  // by part and height
        for (std::size_t k = 0; k < known.size(); ++k) rows[{parts[known[k]], heights[k]}] = kNoRow;
        int last = kNoRow;
        for (auto& [key, row] : rows) {
            row = NewRow(key.first);
            if (last != kNoRow && partOf_[At(last)] == key.first) below_[At(last)].push_back(row);
            last = row;
        }
        for (std::size_t k = 0; k < known.size(); ++k) row_[known[k]] = rows[{parts[known[k]], heights[k]}];
    }

    /// Boxes of one row that a new line joins: the one with fewer lines, of equals the member, looks for
    /// another.
    void TakeOutNeighbours() {
        std::vector<int> lines(row_.size());
        for (const Line& line : graph_.lines) {
            ++lines[At(line.from)];
            ++lines[At(line.to)];
        }
        for (const Line& line : graph_.lines) {
            const int owner = line.from, member = line.to;
            if (owner == member || row_[At(owner)] != row_[At(member)]) continue;
            row_[At(lines[At(owner)] < lines[At(member)] ? owner : member)] = kNoRow;
        }
    }

    bool LeadsTo(int from, int to) const {
        std::vector<bool> seen(below_.size());
        std::vector<int> walk{from};
        seen[At(from)] = true;
        while (!walk.empty()) {
            const int row = walk.back();
            walk.pop_back();
            if (row == to) return true;
            for (const int next : below_[At(row)]) {
                if (seen[At(next)]) continue;
                seen[At(next)] = true;
                walk.push_back(next);
            }
        }
        return false;
    }

    const Graph& graph_;
    std::vector<int> row_;                 ///< Of each box.
    std::vector<std::vector<int>> below_;  ///< Rows that must be below each row.
    std::vector<int> partOf_;              ///< The part of each row; -1 for that of a new box.
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
    FormerOrder(const FormerPlaces& former, const std::vector<int>& parts, Layers& layers)
        : former_(former),
          parts_(parts),
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
        const std::map<std::pair<int, int>, double> heights = Heights();
        for (std::size_t i = 0; i < x_.size(); ++i) {
            const LayerNode& node = layers_.nodes[i];
            if (node.bundle < 0) {
                if (former_.centers[i]) x_[i] = former_.centers[i]->x;
            } else {
                const Bundle& bundle = layers_.bundles[At(node.bundle)];
                const auto height = heights.find({node.layer, parts_[At(bundle.upper)]});
                for (const int line : bundle.lines)
                    if (height != heights.end() && !x_[i])
                        x_[i] = CrossingOf(former_.routes[At(line)], height->second);
            }
            if (!x_[i]) free_.push_back(static_cast<int>(i));
        }
    }

    /// Where the middle of each row was, by layer and part; not of new rows.
    std::map<std::pair<int, int>, double> Heights() const {
        std::map<std::pair<int, int>, std::vector<double>> middles;
        for (std::size_t i = 0; i < parts_.size(); ++i)
            if (former_.centers[i])
                middles[{layers_.nodes[i].layer, parts_[i]}].push_back(former_.centers[i]->y);
        std::map<std::pair<int, int>, double> heights;
        for (auto& [key, values] : middles) {  // most of its boxes were there
            std::sort(values.begin(), values.end());
            heights[key] = values[values.size() / 2];
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
    const std::vector<int>& parts_;  ///< Of each box.
    Layers& layers_;
    std::vector<std::optional<double>> x_;
    std::vector<int> place_;
    std::vector<Ends> above_, below_;
    std::vector<int> free_;  ///< Nodes that were not there.
};

}  // namespace

Layers LayersAsBefore(const Graph& graph, const FormerPlaces& former) {
    const std::vector<int> parts = FormerParts(graph, former);
    Layers layers = MakeLayers(graph, FormerRanks(graph, former, parts).Find());
    FormerOrder(former, parts, layers).Apply();
    return layers;
}

}  // namespace norvelis::layout
