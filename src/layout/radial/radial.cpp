#include "layout/radial/radial.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "layout/graph/eigenvectors.h"
#include "layout/graph/reach.h"
#include "layout/rings/gaps.h"
#include "layout/rings/ring.h"
#include "layout/spacing/spacing.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// From one turn to another whichever direction is shorter, -0.5 to 0.5.
double Path(double from, double to) {
    return std::remainder(to - from, 1.0);
}

class RadialPlacer {
  public:
    RadialPlacer(const Graph& graph, const Gaps& gaps);
    std::vector<Point> Place();

  private:
    void FindRings();
    void ShareSectors();
    void TurnAsInSpectralDrawing();
    void MakeRings();
    void Settle(int rounds, bool mayReorder);
    void SettleRing(std::size_t ring, bool mayReorder);
    void PutOnRings();
    void Swap();
    double LengthOfLines(int box) const;
    double StepsBetween(std::size_t ring, int a, int b) const;

    const Graph& graph_;
    Gaps gaps_;
    Neighbours neighbours_, children_;
    std::vector<int> parent_, ringOf_;
    std::vector<double> weight_, turn_, from_, to_;
    std::vector<std::vector<int>>
        rings_;                 ///< By distance; the boxes of each in ascending order of their turns.
    std::vector<Box> steps_;    ///< From box to box; one for each ring but the first, which is the middle.
    std::vector<Ring> shapes_;  ///< Likewise.
    std::vector<Point> centers_;
    bool isTree_ = false;
};

RadialPlacer::RadialPlacer(const Graph& graph, const Gaps& gaps)
    : graph_(graph),
      gaps_(gaps),
      neighbours_(NeighboursOf(graph)),
      children_(graph.boxes.size()),
      parent_(graph.boxes.size(), -1),
      ringOf_(graph.boxes.size()),
      weight_(graph.boxes.size(), 1.0),
      turn_(graph.boxes.size()),
      from_(graph.boxes.size()),
      to_(graph.boxes.size()),
      centers_(graph.boxes.size()) {}

/// The breadth-first tree around the middle.
void RadialPlacer::FindRings() {
    const int middle = MostReach(neighbours_);
    std::vector<bool> seen(graph_.boxes.size());
    std::vector<int> ring{middle};
    seen[At(middle)] = true;
    isTree_ = true;
    while (!ring.empty()) {
        std::vector<int> next;
        for (const int box : ring) {
            ringOf_[At(box)] = static_cast<int>(rings_.size());
            for (const int other : neighbours_[At(box)]) {
                if (seen[At(other)]) {
                    isTree_ = isTree_ && (parent_[At(box)] == other || parent_[At(other)] == box);
                    continue;
                }
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
        ringOf_[i] = static_cast<int>(rings_.size());
    }
    if (!beyond.empty()) rings_.push_back(std::move(beyond));
    for (std::size_t k = rings_.size(); k-- > 1;)
        for (const int box : rings_[k]) weight_[At(parent_[At(box)])] += weight_[At(box)];
}

/// Every subtree has a sector as wide as it has boxes.
void RadialPlacer::ShareSectors() {
    const int middle = rings_.front().front();
    from_[At(middle)] = 0;
    to_[At(middle)] = 1;
    for (auto& ring : rings_) {
        for (const int box : ring) {
            const double whole = weight_[At(box)] - 1;
            double at = from_[At(box)];
            turn_[At(box)] = (from_[At(box)] + to_[At(box)]) / 2;
            for (const int child : children_[At(box)]) {
                const double width = (to_[At(box)] - from_[At(box)]) * weight_[At(child)] / whole;
                from_[At(child)] = at;
                to_[At(child)] = at += width;
            }
        }
        std::stable_sort(ring.begin(), ring.end(), [&](int a, int b) { return turn_[At(a)] < turn_[At(b)]; });
    }
}

void RadialPlacer::MakeRings() {
    const Box middle = graph_.boxes[At(rings_.front().front())];
    RingShape hole{middle.width / 2, middle.height / 2, 3};
    for (std::size_t k = 1; k < rings_.size(); ++k) {
        Box largest, step{gaps_.x, gaps_.y};
        for (const int box : rings_[k]) {
            const Box& size = graph_.boxes[At(box)];
            largest = {std::max(largest.width, size.width), std::max(largest.height, size.height)};
            step.width += size.width / static_cast<double>(rings_[k].size());
            step.height += size.height / static_cast<double>(rings_[k].size());
        }
        steps_.push_back({std::max(step.width, 1e-3), std::max(step.height, 1e-3)});
        double steps = 0;
        for (const int box : rings_[k]) steps += StepsBetween(k, box, box);
        constexpr int kAsManyLanesAsNeeded = 1000;
        shapes_.emplace_back(hole, largest, Box{gaps_.x, gaps_.y}, steps_.back(), steps,
                             kAsManyLanesAsNeeded);
        hole = shapes_.back().Cover();
    }
}

/// From one box to the next on a ring.
double RadialPlacer::StepsBetween(std::size_t ring, int a, int b) const {
    const Box &before = graph_.boxes[At(a)], &after = graph_.boxes[At(b)], &step = steps_[ring - 1];
    return std::max(((before.width + after.width) / 2 + gaps_.x) / step.width,
                    ((before.height + after.height) / 2 + gaps_.y) / step.height);
}

/// Boxes of a ring turn towards the boxes that their lines lead to.
void RadialPlacer::SettleRing(std::size_t ring, bool mayReorder) {
    std::vector<int>& boxes = rings_[ring];
    std::vector<double> wish(graph_.boxes.size());
    for (const int box : boxes) {
        double sum = 0, count = 0;
        for (const int other : neighbours_[At(box)]) {
            if (ringOf_[At(other)] == 0) continue;  // the middle is in no direction
            sum += Path(turn_[At(box)], turn_[At(other)]);
            ++count;
        }
        wish[At(box)] = turn_[At(box)] + (count > 0 ? sum / count : 0);
    }
    if (mayReorder)
        std::stable_sort(boxes.begin(), boxes.end(), [&](int a, int b) { return wish[At(a)] < wish[At(b)]; });
    std::vector<double> wishes, distance;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const int before = boxes[i > 0 ? i - 1 : boxes.size() - 1];
        wishes.push_back(wish[At(boxes[i])]);
        distance.push_back(shapes_[ring - 1].TurnsOf(StepsBetween(ring, before, boxes[i])));
    }
    const std::vector<double> turns = SeparateAround(wishes, distance);
    for (std::size_t i = 0; i < boxes.size(); ++i) turn_[At(boxes[i])] = turns[i];
}

void RadialPlacer::Settle(int rounds, bool mayReorder) {
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t ring = 1; ring < rings_.size(); ++ring) SettleRing(ring, mayReorder);
        for (std::size_t ring = rings_.size(); ring-- > 1;) SettleRing(ring, mayReorder);
    }
}

void RadialPlacer::PutOnRings() {
    for (std::size_t ring = 1; ring < rings_.size(); ++ring) {
        std::vector<double> turns;
        for (const int box : rings_[ring]) turns.push_back(turn_[At(box)]);
        const std::vector<Point> places = shapes_[ring - 1].Places(turns, std::vector<bool>(turns.size()));
        for (std::size_t i = 0; i < places.size(); ++i) centers_[At(rings_[ring][i])] = places[i];
    }
}

double RadialPlacer::LengthOfLines(int box) const {
    const Point& center = centers_[At(box)];
    double length = 0;
    for (const int other : neighbours_[At(box)])
        length += std::abs(center.x - centers_[At(other)].x) + std::abs(center.y - centers_[At(other)].y);
    return length;
}

/// Boxes of one ring change places where that makes lines shorter.
void RadialPlacer::Swap() {
    long budget = 4'000'000;  // lines looked at; keeps the largest rings within a fraction of a second
    for (bool swapped = true; swapped;) {
        swapped = false;
        for (std::size_t k = 1; k < rings_.size(); ++k) {
            std::vector<int>& ring = rings_[k];
            for (std::size_t i = 1; i < ring.size(); ++i) {
                for (std::size_t j = 0; j < i; ++j) {
                    const int a = ring[i], b = ring[j];
                    budget -= static_cast<long>(neighbours_[At(a)].size() + neighbours_[At(b)].size());
                    if (budget < 0) return;
                    const double before = LengthOfLines(a) + LengthOfLines(b);
                    std::swap(centers_[At(a)], centers_[At(b)]);
                    if (LengthOfLines(a) + LengthOfLines(b) < before - 1e-9) {
                        std::swap(turn_[At(a)], turn_[At(b)]);
                        std::swap(ring[i], ring[j]);
                        swapped = true;
                    } else {
                        std::swap(centers_[At(a)], centers_[At(b)]);
                    }
                }
            }
        }
    }
}

/// Boxes turn as they are around the middle in a spectral drawing.
void RadialPlacer::TurnAsInSpectralDrawing() {
    const std::vector<Point> places = SpectralPlaces(neighbours_);
    const Point middle = places[At(rings_.front().front())];
    for (std::size_t i = 0; i < places.size(); ++i)
        turn_[i] = std::atan2(places[i].y - middle.y, places[i].x - middle.x) / (2 * M_PI);
    for (auto& ring : rings_)
        std::stable_sort(ring.begin(), ring.end(), [&](int a, int b) { return turn_[At(a)] < turn_[At(b)]; });
}

std::vector<Point> RadialPlacer::Place() {
    FindRings();
    MakeRings();
    if (isTree_) {
        ShareSectors();
        Settle(8, false);
        PutOnRings();
    } else {
        TurnAsInSpectralDrawing();
        Settle(3, true);
        Settle(8, false);
        PutOnRings();
        Swap();
        Settle(2, false);
        PutOnRings();
        Swap();
    }
    std::vector<Rect> boxes;
    for (std::size_t i = 0; i < centers_.size(); ++i)
        boxes.push_back(RectAround(centers_[i], graph_.boxes[i].width, graph_.boxes[i].height));
    SpreadBoxes(boxes, gaps_.x, gaps_.y);
    for (std::size_t i = 0; i < centers_.size(); ++i) centers_[i] = boxes[i].Center();
    return centers_;
}

}  // namespace

std::vector<Point> PlaceRadial(const Graph& graph, const Style& style) {
    if (graph.boxes.empty()) return {};
    return RadialPlacer(graph, LeastGaps(graph, style)).Place();
}

}  // namespace norvelis::layout
