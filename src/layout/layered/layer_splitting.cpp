#include "layout/layered/layer_splitting.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "layout/graph/notes.h"
#include "layout/layered/loops.h"

namespace norvelis::layout {

namespace {
std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}
}  // namespace

LayerSplitter::LayerSplitter(const Graph& graph, const Layers& layers, const Style& style)
    : layers_(layers), lineGap_(style.lineGap), nodes_(layers.nodes.size()), rowHeight_(layers.order.size()) {
    std::vector<int> place(layers.nodes.size());
    for (const auto& layer : layers.order)
        for (std::size_t i = 0; i < layer.size(); ++i) place[At(layer[i])] = static_cast<int>(i);
    const std::vector<std::vector<int>> loops = LoopsOf(graph);
    double label = 0;
    for (const Line& line : graph.lines) label = std::max(label, line.labelHeight);
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const Box& box = graph.boxes[i];
        nodes_[i].width = box.width + LoopSpace(graph, loops[i], style) + style.boxGapX + NoteSpace(box);
        double& height = rowHeight_[At(layers.nodes[i].layer)];
        // Over a row of boxes are the channel of its lines and the row of their labels with a channel of its
        // own.
        height = std::max(height, HeightWithNote(box) + label + 4 * style.lineGap);
    }
    std::vector<std::vector<std::pair<int, int>>> into(nodes_.size()),
        from(nodes_.size());  // place and bundle
    for (std::size_t b = 0; b < layers.bundles.size(); ++b) {
        const Bundle& bundle = layers.bundles[b];
        const int lines = static_cast<int>(bundle.lines.size()), name = static_cast<int>(b);
        const int first = bundle.chain.empty() ? bundle.lower : bundle.chain.front();
        const int last = bundle.chain.empty() ? bundle.upper : bundle.chain.back();
        from[At(bundle.upper)].emplace_back(place[At(first)], name);
        into[At(bundle.lower)].emplace_back(place[At(last)], name);
        nodes_[At(bundle.upper)].linesOut += lines;
        nodes_[At(bundle.lower)].linesIn += lines;
        for (const int node : bundle.chain) nodes_[At(node)].linesIn = nodes_[At(node)].linesOut = lines;
    }
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        std::sort(into[i].begin(), into[i].end());
        std::sort(from[i].begin(), from[i].end());
        for (const auto& [at, bundle] : into[i]) nodes_[i].in.push_back(bundle);
        for (const auto& [at, bundle] : from[i]) nodes_[i].out.push_back(bundle);
        Node& node = nodes_[i];
        node.mayRise = node.in.size() == 1 && node.linesIn == 1 && node.linesOut <= 1 &&
                       graph.lines[At(layers.bundles[At(node.in.front())].lines.front())].labelWidth == 0;
    }
}

/// Each box in turn goes to the part that is least wide by then.
LayerSplitter::Spread LayerSplitter::SpreadOver(std::size_t layer, int parts) const {
    Spread spread;
    std::vector<double> widths(At(parts));
    for (const int at : layers_.order[layer]) {
        const Node& node = nodes_[At(at)];
        if (node.width == 0) {
            spread.part.push_back(-1);
            for (double& width : widths) width += lineGap_ * node.linesIn;
            continue;
        }
        const auto least = std::min_element(widths.begin(), widths.end());
        const auto part = least - widths.begin();
        spread.part.push_back(static_cast<int>(part));
        for (std::size_t k = 0; k < widths.size(); ++k) {
            const auto other = static_cast<std::ptrdiff_t>(k);
            if (other == part) {
                widths[k] += node.width;
            } else {
                widths[k] += lineGap_ * (other < part ? node.linesIn : node.linesOut);
            }
        }
    }
    spread.width = *std::max_element(widths.begin(), widths.end());
    return spread;
}

LayerSplitter::Plan LayerSplitter::PlanWithin(double width) const {
    Plan plan;
    for (std::size_t layer = 0; layer < layers_.order.size(); ++layer) {
        const auto boxes = std::count_if(layers_.order[layer].begin(), layers_.order[layer].end(),
                                         [&](int node) { return nodes_[At(node)].width > 0; });
        int best = 1;
        double least = std::numeric_limits<double>::infinity();
        for (int parts = 1; parts <= std::max<std::ptrdiff_t>(1, boxes); ++parts) {
            const double wide = SpreadOver(layer, parts).width;
            if (wide < least) {
                least = wide;
                best = parts;
            }
            if (wide <= width || wide > 1.5 * least) break;
        }
        plan.parts.push_back(best);
        plan.width = std::max(plan.width, least);
        plan.height += best * rowHeight_[layer];
    }
    return plan;
}

LayerSplitter::Plan LayerSplitter::PlanFor(double ratio, Box stretch) const {
    constexpr double kStep = 0.9;
    const auto sizeOnPaper = [&](const Plan& plan) {
        return std::max(plan.width * stretch.width, plan.height * stretch.height * ratio);
    };
    Plan best = PlanWithin(std::numeric_limits<double>::infinity());
    for (double width = best.width * kStep; width > 0; width *= kStep) {
        const Plan plan = PlanWithin(width);
        if (sizeOnPaper(plan) < sizeOnPaper(best)) best = plan;
        // From here on pages only become higher, or no narrower.
        if (plan.height * stretch.height * ratio > plan.width * stretch.width || plan.width > 1.5 * width)
            break;
    }
    return best;
}

Layers LayerSplitter::Split(const Plan& plan) const {
    constexpr double kWider = 1.1;  // than planned, so that blocks stay together
    Rows rows = RowsOf(plan);
    Raise(rows, kWider * plan.width);
    std::erase_if(rows, [](const std::vector<LayerNode>& row) {
        return std::none_of(row.begin(), row.end(), [](const LayerNode& node) { return node.bundle < 0; });
    });
    return LayersOf(rows);
}

LayerSplitter::Rows LayerSplitter::RowsOf(const Plan& plan) const {
    const int bundles = static_cast<int>(layers_.bundles.size());
    Rows rows;
    for (std::size_t layer = 0; layer < layers_.order.size(); ++layer) {
        const std::vector<int> part = SpreadOver(layer, plan.parts[layer]).part;
        for (int row = 0; row < plan.parts[layer]; ++row) {
            rows.emplace_back();
            for (std::size_t i = 0; i < part.size(); ++i) {
                const int node = layers_.order[layer][i];
                if (part[i] < 0) {
                    rows.back().push_back(layers_.nodes[At(node)]);
                } else if (part[i] == row) {
                    rows.back().push_back({node, -1, -1});
                } else {
                    // Beside its box a bundle has the place of the box, which is none of its own.
                    const bool isAbove = part[i] > row;
                    for (const int bundle : isAbove ? nodes_[At(node)].in : nodes_[At(node)].out)
                        rows.back().push_back({-1, bundle, bundle + (isAbove ? 1 : 2) * bundles});
                }
            }
        }
    }
    return rows;
}

void LayerSplitter::Raise(Rows& rows, double width) const {
    std::vector<double> widths;
    std::vector<int> rowOf(nodes_.size());
    const auto widthOf = [&](const LayerNode& node) {
        if (node.bundle < 0) return nodes_[At(node.layer)].width;
        return lineGap_ * static_cast<double>(layers_.bundles[At(node.bundle)].lines.size());
    };
    for (std::size_t r = 0; r < rows.size(); ++r) {
        widths.push_back(0);
        for (const LayerNode& node : rows[r]) {
            widths.back() += widthOf(node);
            if (node.bundle < 0) rowOf[At(node.layer)] = static_cast<int>(r);
        }
    }
    const auto raise = [&](const LayerNode& box, int to) {
        const Node& node = nodes_[At(box.layer)];
        const int from = rowOf[At(box.layer)];
        for (int r = to; r <= from; ++r) {
            std::vector<LayerNode>& row = rows[At(r)];
            const auto at = std::find_if(row.begin(), row.end(), [&](const LayerNode& other) {
                return r == from ? other == box : other.bundle == node.in.front();
            });
            widths[At(r)] -= widthOf(*at);
            if (r == to) {
                *at = box;
            } else if (node.out.empty()) {
                row.erase(at);
                continue;
            } else {
                *at = {-1, node.out.front(), at->section};
            }
            widths[At(r)] += widthOf(*at);
        }
        rowOf[At(box.layer)] = to;
    };
    for (std::size_t r = 0; r < rows.size(); ++r) {
        const std::vector<LayerNode> here = rows[r];
        for (const LayerNode& box : here) {
            if (box.bundle >= 0 || !nodes_[At(box.layer)].mayRise) continue;
            const Bundle& in = layers_.bundles[At(nodes_[At(box.layer)].in.front())];
            int to = rowOf[At(in.upper)] + 1;
            while (to < static_cast<int>(r) && widths[At(to)] + widthOf(box) - lineGap_ > width) ++to;
            if (to < static_cast<int>(r)) raise(box, to);
        }
    }
}

Layers LayerSplitter::LayersOf(const Rows& rows) const {
    Layers split;
    split.bundles = layers_.bundles;
    for (Bundle& bundle : split.bundles) bundle.chain.clear();
    for (const LayerNode& node : layers_.nodes)
        if (node.bundle < 0) split.nodes.push_back(node);
    for (const std::vector<LayerNode>& row : rows) {
        const int layer = static_cast<int>(split.order.size());
        split.order.emplace_back();
        for (const LayerNode& at : row) {
            int node = at.layer;
            if (at.bundle < 0) {
                split.nodes[At(node)].layer = layer;
            } else {
                node = static_cast<int>(split.nodes.size());
                split.nodes.push_back({layer, at.bundle, at.section});
                split.bundles[At(at.bundle)].chain.push_back(node);
            }
            split.order.back().push_back(node);
        }
    }
    AddEdges(split);
    return split;
}

}  // namespace norvelis::layout
