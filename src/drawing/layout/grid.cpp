#include "drawing/layout/grid.h"

#include <algorithm>

namespace norvelis::layout {

namespace {

class GridMaker {
  public:
    GridMaker(const Graph& graph, const Layers& layers, const Style& style)
        : graph_(graph), layers_(layers), style_(style) {}

    Grid Make() {
        CollectEdges();
        AddBoxes();
        for (std::size_t layer = 0; layer < layers_.order.size(); ++layer) {
            if (layer > 0) AddRowBetween(static_cast<int>(layer));
            AddLayer(static_cast<int>(layer));
        }
        ThreadWays();
        AddLabels();
        return std::move(grid_);
    }

  private:
    void AddBoxes() {
        grid_.rows.resize(layers_.order.empty() ? 0 : 2 * layers_.order.size() - 1);
        grid_.ways.resize(graph_.lines.size());
        std::vector<std::vector<const Line*>> loops(graph_.boxes.size());
        for (const Line& line : graph_.lines)
            if (line.from == line.to) loops[line.from].push_back(&line);
        for (std::size_t i = 0; i < graph_.boxes.size(); ++i) {
            const Box& box = graph_.boxes[i];
            const int row = 2 * layers_.nodes[i].layer;
            double height = box.height;
            for (const Line* loop : loops[i]) height = std::max(height, loop->labelHeight);
            grid_.places.push_back({row, static_cast<int>(i), -1, false, box.width / 2,
                                    box.width / 2 + LoopRoom(loops[i], style_), height, 0});
        }
    }

    void AddLayer(int layer) {
        for (const int node : layers_.order[layer]) {
            const int bundle = layers_.nodes[node].bundle;
            if (bundle < 0) {
                grid_.rows[2 * layer].push_back(node);
            } else {
                AddPassing(2 * layer, bundle);
            }
        }
    }

    /// Every node's bundles from above, from left to right.
    void CollectEdges() {
        std::vector<int> place(layers_.nodes.size());
        for (const auto& layer : layers_.order)
            for (std::size_t i = 0; i < layer.size(); ++i) place[layer[i]] = static_cast<int>(i);
        bundlesInto_.resize(layers_.nodes.size());
        for (std::size_t b = 0; b < layers_.bundles.size(); ++b) {
            const Bundle& bundle = layers_.bundles[b];
            int upper = bundle.upper;
            for (const int lower : bundle.chain) {
                bundlesInto_[lower].emplace_back(place[upper], static_cast<int>(b));
                upper = lower;
            }
            bundlesInto_[bundle.lower].emplace_back(place[upper], static_cast<int>(b));
        }
        for (auto& bundles : bundlesInto_) std::sort(bundles.begin(), bundles.end());
    }

    /// Bundles between two layers, in the order in which they reach the lower one: all that cross do so above
    /// the row.
    void AddRowBetween(int layer) {
        for (const int node : layers_.order[layer])
            for (const auto& [place, bundle] : bundlesInto_[node]) AddPassing(2 * layer - 1, bundle);
    }

    void AddPassing(int row, int bundle) {
        for (const int line : layers_.bundles[bundle].lines) {
            grid_.rows[row].push_back(static_cast<int>(grid_.places.size()));
            grid_.places.push_back({row, -1, line, false, 0, 0, 0, 0});
        }
    }

    void ThreadWays() {
        for (const Bundle& bundle : layers_.bundles)
            for (const int line : bundle.lines) grid_.ways[line].push_back(bundle.upper);
        for (const auto& row : grid_.rows)
            for (const int place : row)
                if (grid_.places[place].line >= 0) grid_.ways[grid_.places[place].line].push_back(place);
        for (const Bundle& bundle : layers_.bundles)
            for (const int line : bundle.lines) grid_.ways[line].push_back(bundle.lower);
    }

    /// Short lines have one place for their label; long ones take the row that is least wide by then.
    void AddLabels() {
        std::vector<double> widths(grid_.rows.size());
        for (std::size_t row = 0; row < grid_.rows.size(); ++row)
            for (std::size_t i = 1; i < grid_.rows[row].size(); ++i)
                widths[row] += LeastDistance(grid_.places[grid_.rows[row][i - 1]],
                                             grid_.places[grid_.rows[row][i]], style_);
        std::vector<int> lines;
        for (std::size_t k = 0; k < graph_.lines.size(); ++k)
            if (graph_.lines[k].labelWidth > 0 && !grid_.ways[k].empty())
                lines.push_back(static_cast<int>(k));
        std::stable_sort(lines.begin(), lines.end(),
                         [&](int a, int b) { return grid_.ways[a].size() < grid_.ways[b].size(); });
        for (const int line : lines) {
            const auto& way = grid_.ways[line];
            const int place = *std::min_element(way.begin() + 1, way.end() - 1, [&](int a, int b) {
                return widths[grid_.places[a].row] < widths[grid_.places[b].row];
            });
            Place& at = grid_.places[place];
            at.label = true;
            at.before = at.after = graph_.lines[line].labelWidth / 2;
            at.height = graph_.lines[line].labelHeight;
            widths[at.row] += graph_.lines[line].labelWidth;
        }
    }

    const Graph& graph_;
    const Layers& layers_;
    const Style& style_;
    std::vector<std::vector<std::pair<int, int>>>
        bundlesInto_;  ///< For each node: place of the upper node, bundle.
    Grid grid_;
};

}  // namespace

double LeastDistance(const Place& left, const Place& right, const Style& style) {
    const bool atBox = left.box >= 0 || right.box >= 0, boxes = left.box >= 0 && right.box >= 0;
    const double gap = boxes   ? style.boxGapX
                       : atBox ? std::max(style.lineGap, style.boxGapX / 2)
                               : style.lineGap;
    return left.after + gap + right.before;
}

double LoopRoom(const std::vector<const Line*>& loops, const Style& style) {
    double room = 0;
    for (const Line* loop : loops) room += style.lineGap + std::max(style.lineGap, loop->labelWidth);
    return room;
}

Grid MakeGrid(const Graph& graph, const Layers& layers, const Style& style) {
    return GridMaker(graph, layers, style).Make();
}

}  // namespace norvelis::layout
