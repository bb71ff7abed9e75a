#include "drawing/layout/radial.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "drawing/layout/gaps.h"
#include "drawing/layout/reach.h"
#include "drawing/layout/ring.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// The breadth-first tree around the middle: rings by distance, sectors by subtree size.
class RadialTree {
  public:
    explicit RadialTree(const Graph& graph);

    const std::vector<std::vector<int>>& Rings() const { return rings_; }
    double AngleOf(int box) const { return angle_[At(box)]; }

  private:
    void ShareSectors();
    void OrderChildren();

    Neighbours neighbours_, children_;
    std::vector<int> parent_;
    std::vector<std::vector<int>> rings_;
    std::vector<double> weight_, angle_, from_, to_;
};

RadialTree::RadialTree(const Graph& graph)
    : neighbours_(NeighboursOf(graph)),
      children_(graph.boxes.size()),
      parent_(graph.boxes.size(), -1),
      weight_(graph.boxes.size(), 1.0),
      angle_(graph.boxes.size()),
      from_(graph.boxes.size()),
      to_(graph.boxes.size()) {
    const int middle = MostReach(neighbours_);
    std::vector<bool> seen(graph.boxes.size());
    std::vector<int> ring{middle};
    seen[At(middle)] = true;
    while (!ring.empty()) {
        std::vector<int> next;
        for (const int box : ring) {
            for (const int other : neighbours_[At(box)]) {
                if (seen[At(other)]) continue;
                seen[At(other)] = true;
                parent_[At(other)] = box;
                children_[At(box)].push_back(other);
                next.push_back(other);
            }
        }
        rings_.push_back(std::move(ring));
        ring = std::move(next);
    }
    std::vector<int> beyond;  // not joined to the middle at all
    for (std::size_t i = 0; i < seen.size(); ++i) {
        if (seen[i]) continue;
        beyond.push_back(static_cast<int>(i));
        children_[At(middle)].push_back(static_cast<int>(i));
        parent_[i] = middle;
    }
    if (!beyond.empty()) rings_.push_back(std::move(beyond));

    for (std::size_t k = rings_.size(); k-- > 1;)
        for (const int box : rings_[k]) weight_[At(parent_[At(box)])] += weight_[At(box)];
    ShareSectors();
    for (int round = 0; round < 8; ++round) {
        OrderChildren();
        ShareSectors();
    }
}

void RadialTree::ShareSectors() {
    const int middle = rings_.front().front();
    from_[At(middle)] = 0;
    to_[At(middle)] = 2 * M_PI;
    for (const auto& ring : rings_) {
        for (const int box : ring) {
            const double whole = weight_[At(box)] - 1;
            double at = from_[At(box)];
            angle_[At(box)] = (from_[At(box)] + to_[At(box)]) / 2;
            for (const int child : children_[At(box)]) {
                const double width = (to_[At(box)] - from_[At(box)]) * weight_[At(child)] / whole;
                from_[At(child)] = at;
                to_[At(child)] = at += width;
            }
        }
    }
}

/// Children turn towards the lines that lead out of their subtrees (barycentres, as in layered drawing).
void RadialTree::OrderChildren() {
    std::vector<Point> pull(angle_.size());
    for (std::size_t k = rings_.size(); k-- > 0;) {
        for (const int box : rings_[k]) {
            Point& sum = pull[At(box)];
            for (const int other : neighbours_[At(box)]) {
                const bool inTree = parent_[At(other)] == box || parent_[At(box)] == other;
                if (inTree) continue;
                sum.x += std::cos(angle_[At(other)]);
                sum.y += std::sin(angle_[At(other)]);
            }
            for (const int child : children_[At(box)]) {
                sum.x += pull[At(child)].x;
                sum.y += pull[At(child)].y;
            }
        }
    }
    for (const auto& ring : rings_) {
        for (const int box : ring) {
            auto& children = children_[At(box)];
            std::vector<std::pair<double, int>> order;
            for (const int child : children) {
                const Point& sum = pull[At(child)];
                const double own = angle_[At(child)];
                // How far the pull asks the child to turn from where it stands now.
                double turn = 0;
                if (sum.x != 0 || sum.y != 0) {
                    turn = std::remainder(std::atan2(sum.y, sum.x) - own, 2 * M_PI);
                    turn *= std::min(1.0, std::hypot(sum.x, sum.y));
                }
                order.emplace_back(own + turn * 0.7, child);
            }
            std::stable_sort(order.begin(), order.end(),
                             [](const auto& a, const auto& b) { return a.first < b.first; });
            for (std::size_t i = 0; i < order.size(); ++i) children[i] = order[i].second;
        }
    }
}

std::vector<Point> PlaceRings(const Graph& graph, const RadialTree& tree, const Gaps& gaps) {
    std::vector<Point> centers(graph.boxes.size());
    const Box middle = graph.boxes[At(tree.Rings().front().front())];
    RingShape hole{middle.width / 2, middle.height / 2, 3};
    for (std::size_t k = 1; k < tree.Rings().size(); ++k) {
        std::vector<RingBox> boxes;
        for (const int box : tree.Rings()[k]) {
            double turn = tree.AngleOf(box) / (2 * M_PI);
            boxes.push_back({graph.boxes[At(box)], 2 * M_PI * (turn - std::floor(turn)), {}, box});
        }
        PlaceOnRing(boxes, hole, gaps.x, gaps.y, 1000);
        for (const RingBox& box : boxes) centers[At(box.id)] = box.center;
    }
    KeepApart(graph.boxes, centers, gaps.x, gaps.y);
    return centers;
}

}  // namespace

std::vector<Point> PlaceRadial(const Graph& graph, const Style& style) {
    if (graph.boxes.empty()) return {};
    const RadialTree tree(graph);
    const Gaps least = LeastGaps(graph, style);
    const std::vector<Point> sketch = PlaceRings(graph, tree, least);
    return PlaceRings(graph, tree, GapsForLines(graph, sketch, style));
}

}  // namespace norvelis::layout
