#include "layout/circular/circular.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "layout/circular/circle_order.h"
#include "layout/graph/biconnected.h"
#include "layout/graph/reach.h"
#include "layout/rings/gaps.h"
#include "layout/rings/ring.h"
#include "layout/spacing/spacing.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

constexpr int kBoxesOfALane = 72;      // a circle with more boxes gets a second lane, and so on
constexpr double kCircleAspect = 1.6;  // pages are wider than high

/// The direction in which a part of the drawing grows away from the circle it hangs on.
enum class Outward { Right, Up, Left, Down };

bool IsHorizontal(Outward outward) {
    return outward == Outward::Right || outward == Outward::Left;
}

double TurnOf(Outward outward) {
    return static_cast<int>(outward) / 4.0;
}

/// Some boxes of the graph with their places, and the rectangle that holds them. The first one is what they
/// hang on.
struct Part {
    std::vector<std::pair<int, Point>> boxes;
    Rect bounds;

    Point Anchor() const { return boxes.front().second; }
    void Move(Point by) {
        for (auto& box : boxes) box.second = box.second + by;
        bounds = {bounds.x0 + by.x, bounds.y0 + by.y, bounds.x1 + by.x, bounds.y1 + by.y};
    }
    void Add(const Part& other) {
        const Rect& b = other.bounds;
        bounds = boxes.empty() ? b
                               : Rect{std::min(bounds.x0, b.x0), std::min(bounds.y0, b.y0),
                                      std::max(bounds.x1, b.x1), std::max(bounds.y1, b.y1)};
        boxes.insert(boxes.end(), other.boxes.begin(), other.boxes.end());
    }
};

class BlockTree {
  public:
    BlockTree(const Graph& graph, const Gaps& gaps);
    std::vector<Point> Place() const;

  private:
    /// What is at one place of a circle: a box and what hangs on it outwards.
    struct Hanging {
        int box;
        int under;  ///< The block that it is reached from.
        double turn;
    };
    Part BoxOf(int box) const;
    Part Hang(int box, Outward outward, int under) const;
    Part Circle(int block, int owner, bool ownerIsOnIt, Outward outward) const;
    Part Around(const std::vector<Hanging>& hangings, int middle) const;
    Part Shelves(std::vector<Part> parts, Outward outward) const;
    void PutBeyond(Part& part, Part next, Outward outward) const;

    const Graph& graph_;
    Gaps gaps_;
    Neighbours neighbours_;
    std::vector<std::vector<int>> blocks_;    ///< Their boxes, in the order of the circle.
    std::vector<std::vector<int>> blocksOf_;  ///< Of each box.
};

BlockTree::BlockTree(const Graph& graph, const Gaps& gaps)
    : graph_(graph), gaps_(gaps), neighbours_(NeighboursOf(graph)), blocksOf_(graph.boxes.size()) {
    blocks_ = BiconnectedComponents(neighbours_);
    std::vector<int> local(graph.boxes.size(), -1);
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        std::vector<int>& block = blocks_[i];
        for (const int box : block) blocksOf_[At(box)].push_back(static_cast<int>(i));
        if (block.size() < 4) continue;
        for (std::size_t k = 0; k < block.size(); ++k) local[At(block[k])] = static_cast<int>(k);
        std::vector<std::pair<int, int>> edges;
        for (const int box : block)
            for (const int other : neighbours_[At(box)])
                if (local[At(other)] > local[At(box)]) edges.emplace_back(local[At(box)], local[At(other)]);
        std::vector<int> ordered;
        for (const int k : CircleOrder(static_cast<int>(block.size()), edges))
            ordered.push_back(block[At(k)]);
        for (const int box : block) local[At(box)] = -1;
        block = std::move(ordered);
    }
}

Part BlockTree::BoxOf(int box) const {
    const Box& size = graph_.boxes[At(box)];
    return {{{box, {}}}, RectAround({}, size.width, size.height)};
}

/// The next part outwards of this one, their middles in line.
void BlockTree::PutBeyond(Part& part, Part next, Outward outward) const {
    const Rect &a = part.bounds, &b = next.bounds;
    const Point center = a.Center() - b.Center();
    switch (outward) {
        case Outward::Right:
            next.Move({a.x1 + gaps_.x - b.x0, center.y});
            break;
        case Outward::Left:
            next.Move({a.x0 - gaps_.x - b.x1, center.y});
            break;
        case Outward::Up:
            next.Move({center.x, a.y1 + gaps_.y - b.y0});
            break;
        case Outward::Down:
            next.Move({center.x, a.y0 - gaps_.y - b.y1});
            break;
    }
    part.Add(next);
}

/// Parts side by side on shelves across the direction outwards, small ones nearest.
Part BlockTree::Shelves(std::vector<Part> parts, Outward outward) const {
    const auto along = [&](const Part& part) {
        return IsHorizontal(outward) ? part.bounds.Height() + gaps_.y : part.bounds.Width() + gaps_.x;
    };
    std::stable_sort(parts.begin(), parts.end(), [](const Part& a, const Part& b) {
        return a.bounds.Width() * a.bounds.Height() < b.bounds.Width() * b.bounds.Height();
    });
    double area = 0, longest = 0;
    for (const Part& part : parts) {
        area += (part.bounds.Width() + gaps_.x) * (part.bounds.Height() + gaps_.y);
        longest = std::max(longest, along(part));
    }
    const double length = std::max(longest, std::sqrt(area * 1.6));
    Part shelves, shelf;
    double filled = 0;
    const auto close = [&] {
        if (shelf.boxes.empty()) return;
        if (shelves.boxes.empty()) {
            shelves = std::move(shelf);
        } else {
            PutBeyond(shelves, std::move(shelf), outward);
        }
        shelf = {};
        filled = 0;
    };
    for (Part& part : parts) {
        if (filled > 0 && filled + along(part) > length + 1e-9) close();
        filled += along(part);
        if (!shelf.boxes.empty()) {
            const Rect &a = shelf.bounds, &b = part.bounds;
            switch (outward) {  // side by side, near ends in line
                case Outward::Up:
                    part.Move({a.x1 + gaps_.x - b.x0, a.y0 - b.y0});
                    break;
                case Outward::Down:
                    part.Move({a.x1 + gaps_.x - b.x0, a.y1 - b.y1});
                    break;
                case Outward::Right:
                    part.Move({a.x0 - b.x0, a.y1 + gaps_.y - b.y0});
                    break;
                case Outward::Left:
                    part.Move({a.x1 - b.x1, a.y1 + gaps_.y - b.y0});
                    break;
            }
        }
        shelf.Add(part);
    }
    close();
    return shelves;
}

/// A box with all that hangs on it, but for the block that it is reached from.
Part BlockTree::Hang(int box, Outward outward, int under) const {
    Part part = BoxOf(box);
    std::vector<Part> parts;
    std::vector<int> blocks = blocksOf_[At(box)];
    std::stable_sort(blocks.begin(), blocks.end(),
                     [&](int a, int b) { return blocks_[At(a)].size() > blocks_[At(b)].size(); });
    bool onCircle = false;
    for (const int block : blocks) {
        if (block == under) continue;
        const std::vector<int>& boxes = blocks_[At(block)];
        if (boxes.size() == 2) {
            parts.push_back(Hang(boxes[0] == box ? boxes[1] : boxes[0], outward, block));
        } else if (!onCircle) {
            part = Circle(block, box, true, outward);
            onCircle = true;
        } else {
            parts.push_back(Circle(block, box, false, outward));
        }
    }
    if (parts.empty()) return part;
    if (!onCircle) {
        PutBeyond(part, Shelves(std::move(parts), outward), outward);
        return part;
    }
    // What does not fit on the box's circle is beside it, on the near side, where the box is.
    Part shelves = Shelves(std::move(parts), static_cast<Outward>((static_cast<int>(outward) + 1) % 4));
    const Rect &a = part.bounds, &b = shelves.bounds;
    switch (outward) {
        case Outward::Up:
            shelves.Move({a.x0 - gaps_.x - b.x1, a.y0 - b.y0});
            break;
        case Outward::Down:
            shelves.Move({a.x1 + gaps_.x - b.x0, a.y1 - b.y1});
            break;
        case Outward::Right:
            shelves.Move({a.x0 - b.x0, a.y1 + gaps_.y - b.y0});
            break;
        case Outward::Left:
            shelves.Move({a.x1 - b.x1, a.y0 - gaps_.y - b.y1});
            break;
    }
    part.Add(shelves);
    return part;
}

/// A block's boxes on an ellipse, each with what hangs on it outwards. The owner, through which the block is
/// reached, has its place on the near side; when it is on another circle already, the place stays open.
Part BlockTree::Circle(int block, int owner, bool ownerIsOnIt, Outward outward) const {
    std::vector<int> boxes = blocks_[At(block)];
    const auto first = std::find(boxes.begin(), boxes.end(), owner);
    if (first != boxes.end()) std::rotate(boxes.begin(), first, boxes.end());
    std::vector<Hanging> hangings;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const double turn =
            TurnOf(outward) + 0.5 + static_cast<double>(i) / static_cast<double>(boxes.size());
        if (boxes[i] != owner) {
            hangings.push_back({boxes[i], block, turn});
        } else if (ownerIsOnIt) {
            hangings.push_back({owner, -1, turn});
        }
    }
    return Around(hangings, -1);
}

Part BlockTree::Around(const std::vector<Hanging>& hangings, int middle) const {
    const std::size_t count = hangings.size();
    Box largest, step{gaps_.x, gaps_.y};
    for (const Hanging& hanging : hangings) {
        const Box& size = graph_.boxes[At(hanging.box)];
        largest = {std::max(largest.width, size.width), std::max(largest.height, size.height)};
        step.width += size.width / static_cast<double>(count);
        step.height += size.height / static_cast<double>(count);
    }
    RingShape hole{0.5 * kCircleAspect, 0.5, 2};
    if (middle >= 0) hole = {graph_.boxes[At(middle)].width / 2, graph_.boxes[At(middle)].height / 2, 2};
    const Box gaps{gaps_.x, gaps_.y};
    const int lanes = 1 + static_cast<int>(count) / kBoxesOfALane;
    const Ring plain(hole, largest, gaps, step, static_cast<double>(count), lanes);

    // A part needs as much of the ring as it is wide (above and below) or high (at the sides).
    std::vector<Part> parts;
    std::vector<double> turns, before, after;
    std::vector<bool> reachesOut;
    double steps = 0;
    for (const Hanging& hanging : hangings) {
        const double turn = hanging.turn - std::floor(hanging.turn);
        const bool runsHorizontally = plain.RunsHorizontally(turn);
        const Outward outward = runsHorizontally
                                    ? (turn < 0.5 ? Outward::Up : Outward::Down)
                                    : (turn < 0.25 || turn > 0.75 ? Outward::Right : Outward::Left);
        parts.push_back(hanging.under < 0 ? BoxOf(hanging.box) : Hang(hanging.box, outward, hanging.under));
        const Part& part = parts.back();
        const Point anchor = part.Anchor();
        double one = runsHorizontally ? (part.bounds.x1 - anchor.x + gaps_.x / 2) / step.width
                                      : (part.bounds.y1 - anchor.y + gaps_.y / 2) / step.height;
        double other = runsHorizontally ? (anchor.x - part.bounds.x0 + gaps_.x / 2) / step.width
                                        : (anchor.y - part.bounds.y0 + gaps_.y / 2) / step.height;
        // Anticlockwise it goes leftwards above, rightwards below, downwards on the left, upwards on the
        // right.
        if (outward == Outward::Down || outward == Outward::Right) std::swap(one, other);
        before.push_back(one);
        after.push_back(other);
        turns.push_back(hanging.turn);
        reachesOut.push_back(part.boxes.size() > 1);
        steps += one + other;
    }
    const Ring ring(hole, largest, gaps, step, steps, lanes);
    std::vector<double> distance;
    for (std::size_t i = 0; i < count; ++i)
        distance.push_back(ring.TurnsOf(after[i > 0 ? i - 1 : count - 1] + before[i]));
    const std::vector<Point> places = ring.Places(SeparateAround(turns, distance), reachesOut);

    std::vector<Rect> rects;
    for (std::size_t i = 0; i < count; ++i) {
        parts[i].Move(places[i] - parts[i].Anchor());
        rects.push_back(parts[i].bounds);
    }
    if (middle >= 0) rects.push_back(BoxOf(middle).bounds);
    const std::vector<Rect> wished = rects;
    SpreadBoxes(rects, gaps_.x, gaps_.y);
    Part whole;
    if (middle >= 0) {
        whole = BoxOf(middle);
        whole.Move(rects.back().Center());
    }
    for (std::size_t i = 0; i < count; ++i) {
        parts[i].Move(rects[i].Center() - wished[i].Center());
        whole.Add(parts[i]);
    }
    return whole;
}

std::vector<Point> BlockTree::Place() const {
    std::size_t greatest = 0;
    for (std::size_t i = 0; i < blocks_.size(); ++i)
        if (blocks_[i].size() > blocks_[greatest].size()) greatest = i;
    Part drawing;
    if (!blocks_.empty() && blocks_[greatest].size() > 2) {
        drawing = Circle(static_cast<int>(greatest), -1, true, Outward::Down);
    } else {
        // A tree: all that hangs on the box with the most reach goes around it.
        const int middle = MostReach(neighbours_);
        const auto& bridges = blocksOf_[At(middle)];
        std::vector<Hanging> hangings;
        for (std::size_t i = 0; i < bridges.size(); ++i) {
            const auto& ends = blocks_[At(bridges[i])];
            hangings.push_back({ends[0] == middle ? ends[1] : ends[0], bridges[i],
                                static_cast<double>(i) / static_cast<double>(bridges.size())});
        }
        drawing = hangings.empty() ? BoxOf(middle) : Around(hangings, middle);
    }
    std::vector<Point> centers(graph_.boxes.size());
    std::vector<bool> placed(graph_.boxes.size());
    for (const auto& [box, center] : drawing.boxes) {
        centers[At(box)] = center;
        placed[At(box)] = true;
    }
    // Boxes of other components, should there be any, in shelves below.
    std::vector<Part> others;
    for (std::size_t i = 0; i < placed.size(); ++i)
        if (!placed[i]) others.push_back(BoxOf(static_cast<int>(i)));
    if (!others.empty()) {
        PutBeyond(drawing, Shelves(std::move(others), Outward::Down), Outward::Down);
        for (const auto& [box, center] : drawing.boxes) centers[At(box)] = center;
    }
    return centers;
}

}  // namespace

std::vector<Point> PlaceCircular(const Graph& graph, const Style& style) {
    if (graph.boxes.empty()) return {};
    return BlockTree(graph, LeastGaps(graph, style)).Place();
}

}  // namespace norvelis::layout
