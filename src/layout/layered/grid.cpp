#include "layout/layered/grid.h"

#include <algorithm>
#include <cmath>

#include "layout/graph/notes.h"
#include "layout/layered/loops.h"

namespace norvelis::layout {

namespace {

class GridMaker {
  public:
    GridMaker(const Graph& graph, const Layers& layers, const Style& style)
        : graph_(graph), layers_(layers), style_(style) {}

    Grid Make() {
        CollectBundles();
        AddBoxes();
        const std::vector<int> between = RowsBetween();
        for (std::size_t layer = 0; layer < layers_.order.size(); ++layer) {
            for (int row = 0; layer > 0 && row < between[layer]; ++row) AddRowBetween(layer);
            AddLayer(layer);
        }
        ThreadPaths();
        AddLabels();
        return std::move(grid_);
    }

  private:
    void AddBoxes() {
        grid_.paths.resize(graph_.lines.size());
        const std::vector<std::vector<int>> loops = LoopsOf(graph_);
        for (std::size_t i = 0; i < graph_.boxes.size(); ++i) {
            const Box& box = graph_.boxes[i];
            double height = HeightWithNote(box);
            for (const int loop : loops[i]) height = std::max(height, graph_.lines[loop].labelHeight);
            Place place{0,
                        static_cast<int>(i),
                        -1,
                        -1,
                        false,
                        box.width / 2,
                        box.width / 2 + LoopSpace(graph_, loops[i], style_),
                        height,
                        0};
            (box.noteSide == NoteSide::Left ? place.before : place.after) += NoteSpace(box);
            grid_.places.push_back(place);
        }
    }

    void AddLayer(std::size_t layer) {
        grid_.rows.emplace_back();
        grid_.isLayer.push_back(true);
        for (const int node : layers_.order[layer]) {
            const int bundle = layers_.nodes[node].bundle;
            if (bundle < 0) {
                grid_.places[node].row = static_cast<int>(grid_.rows.size()) - 1;
                grid_.rows.back().push_back(node);
            } else {
                AddPassing(bundle, layers_.nodes[node].section);
            }
        }
    }

    /// Every node's bundles from above, from left to right.
    void CollectBundles() {
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

    /// How many rows are above each layer for the labels of short lines: one, but more where they would be
    /// wider than all boxes and lines.
    std::vector<int> RowsBetween() const {
        std::vector<double> labels(layers_.order.size());
        double widest = 0;
        for (std::size_t layer = 0; layer < layers_.order.size(); ++layer) {
            double boxes = 0, passing = 0;
            for (const int node : layers_.order[layer]) {
                if (layers_.nodes[node].bundle < 0)
                    boxes += graph_.boxes[node].width + NoteSpace(graph_.boxes[node]) + style_.boxGapX;
                for (const auto& [place, b] : bundlesInto_[node]) {
                    const Bundle& bundle = layers_.bundles[b];
                    passing += style_.lineGap * static_cast<double>(bundle.lines.size());
                    if (!bundle.chain.empty()) continue;
                    for (const int line : bundle.lines) labels[layer] += graph_.lines[line].labelWidth;
                }
            }
            widest = std::max({widest, boxes, passing});
        }
        std::vector<int> rows;
        for (const double width : labels)
            rows.push_back(std::max(1, static_cast<int>(std::ceil(width / widest))));
        return rows;
    }

    /// Bundles between two layers, in the order in which they reach the lower one: all that cross do so above
    /// the first row.
    void AddRowBetween(std::size_t layer) {
        grid_.rows.emplace_back();
        grid_.isLayer.push_back(false);
        for (const int node : layers_.order[layer])
            for (const auto& [place, bundle] : bundlesInto_[node])
                AddPassing(bundle, layers_.nodes[node].section);
    }

    void AddPassing(int bundle, int section) {
        const int row = static_cast<int>(grid_.rows.size()) - 1;
        for (const int line : layers_.bundles[bundle].lines) {
            grid_.rows.back().push_back(static_cast<int>(grid_.places.size()));
            grid_.places.push_back({row, -1, line, section, false, 0, 0, 0, 0});
        }
    }

    void ThreadPaths() {
        for (const Bundle& bundle : layers_.bundles)
            for (const int line : bundle.lines) grid_.paths[line].push_back(bundle.upper);
        for (const auto& row : grid_.rows)
            for (const int place : row)
                if (grid_.places[place].line >= 0) grid_.paths[grid_.places[place].line].push_back(place);
        for (const Bundle& bundle : layers_.bundles)
            for (const int line : bundle.lines) grid_.paths[line].push_back(bundle.lower);
    }

    /// Short lines first, as they have the least choice; each label goes to the row that is least wide by
    /// then.
    void AddLabels() {
        std::vector<double> widths(grid_.rows.size());
        for (std::size_t row = 0; row < grid_.rows.size(); ++row)
            for (std::size_t i = 1; i < grid_.rows[row].size(); ++i)
                widths[row] += LeastDistance(grid_.places[grid_.rows[row][i - 1]],
                                             grid_.places[grid_.rows[row][i]], style_);
        std::vector<int> lines;
        for (std::size_t k = 0; k < graph_.lines.size(); ++k)
            if (graph_.lines[k].labelWidth > 0 && !grid_.paths[k].empty())
                lines.push_back(static_cast<int>(k));
        std::stable_sort(lines.begin(), lines.end(),
                         [&](int a, int b) { return grid_.paths[a].size() < grid_.paths[b].size(); });
        for (const int line : lines) {
            const auto& path = grid_.paths[line];
            const int place = *std::min_element(path.begin() + 1, path.end() - 1, [&](int a, int b) {
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
    /// For each node its bundles from above: place of the upper node, bundle.
    std::vector<std::vector<std::pair<int, int>>> bundlesInto_;
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

Grid MakeGrid(const Graph& graph, const Layers& layers, const Style& style) {
    return GridMaker(graph, layers, style).Make();
}

}  // namespace norvelis::layout
