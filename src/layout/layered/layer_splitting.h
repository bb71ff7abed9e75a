#pragma once

#include "layout/graph/graph.h"
#include "layout/graph/style.h"
#include "layout/layered/layers.h"

namespace norvelis::layout {

/// Breaks layers that would make the page a band into several, one under the other, over which their boxes
/// are spread. From left to right everything keeps its order: a line to a lower box passes between the boxes
/// before it and after it. So not one crossing is added, and each box is still under its owners. Rows of a
/// leaf block then move up to each other.
class LayerSplitter {
  public:
    /// The layers must be in their final order and outlive this.
    LayerSplitter(const Graph& graph, const Layers& layers, const Style& style);

    /// A choice of how often each layer is broken, with the size that the page is expected to have.
    struct Plan {
        std::vector<int> parts;  ///< For each layer.
        double width = 0, height = 0;
        bool operator==(const Plan&) const = default;
    };

    /// The plan that lets the page be enlarged most on paper that is `ratio` times as wide as high.
    /// `stretch`: how many times as wide and as high as expected pages come out.
    Plan PlanFor(double ratio, Box stretch) const;

    Layers Split(const Plan& plan) const;

  private:
    struct Node {
        double width = 0;  ///< Of a box, its gap included; 0 for lines passing.
        int linesIn = 0, linesOut = 0;
        /// Of a box that hangs on one other by a line without a label and has one line further down at most:
        /// a row of a leaf block.
        bool mayRise = false;
        std::vector<int> in, out;  ///< Bundles of a box, from left to right at their other ends.
    };
    struct Spread {
        std::vector<int> part;  ///< For each node of the layer, from left to right; -1 for lines passing.
        double width = 0;
    };
    /// From above; in each, from left to right, bundles passing and boxes, whose number is in `layer`.
    using Rows = std::vector<std::vector<LayerNode>>;
    Spread SpreadOver(std::size_t layer, int parts) const;
    Plan PlanWithin(double width) const;
    Rows RowsOf(const Plan& plan) const;
    /// Boxes that may rise move up, as near to the box above as rows within the width leave space for, and
    /// take the place of their line there.
    void Raise(Rows& rows, double width) const;
    Layers LayersOf(const Rows& rows) const;

    const Layers& layers_;
    double lineGap_;
    std::vector<Node> nodes_;
    std::vector<double> rowHeight_;  ///< Of each layer, when it is not broken.
};

}  // namespace norvelis::layout
