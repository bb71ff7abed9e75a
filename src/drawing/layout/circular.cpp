#include "drawing/layout/circular.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "drawing/layout/biconnected.h"
#include "drawing/layout/circle_order.h"
#include "drawing/layout/gaps.h"
#include "drawing/layout/reach.h"
#include "drawing/layout/ring.h"
#include "drawing/routing/spacing.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

constexpr int boxesOfALane = 90;  // a circle with more boxes gets a second lane, and so on

/// The way in which a part of the drawing grows away from the circle it hangs on.
enum class Outward { Right, Up, Left, Down };

Outward OutwardOf(double turn) {
    const int quarter = static_cast<int>(std::lround(turn * 4));
    return static_cast<Outward>(((quarter % 4) + 4) % 4);
}

double TurnOf(Outward outward) {
    return static_cast<int>(outward) / 4.0;
}

/// Some boxes of the graph with their places, and the rectangle that holds them.
struct Drawing {
    std::vector<std::pair<int, Point>> boxes;
    Rect bounds;

    void Move(Point by) {
        for (auto& box : boxes) box.second = box.second + by;
        bounds = {bounds.x0 + by.x, bounds.y0 + by.y, bounds.x1 + by.x, bounds.y1 + by.y};
    }
    void Add(const Drawing& other) {
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
    Drawing BoxOf(int box) const;
    Drawing Hang(int box, Outward outward, int under) const;
    Drawing Circle(int block, int owner, bool ownerIsOnIt, Outward outward) const;
    Drawing Around(const std::vector<Drawing>& parts, const std::vector<double>& turns, int middle) const;
    Drawing Shelves(std::vector<Drawing> parts, Outward outward) const;
    void PutBeyond(Drawing& drawing, Drawing part, Outward outward) const;

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

Drawing BlockTree::BoxOf(int box) const {
    const Box& size = graph_.boxes[At(box)];
    return {{{box, {}}}, RectAround({}, size.width, size.height)};
}

/// The part outwards of the drawing so far, their middles in line.
void BlockTree::PutBeyond(Drawing& drawing, Drawing part, Outward outward) const {
    const Rect &a = drawing.bounds, &b = part.bounds;
    const Point center = a.Center() - b.Center();
    switch (outward) {
        case Outward::Right:
            part.Move({a.x1 + gaps_.x - b.x0, center.y});
            break;
        case Outward::Left:
            part.Move({a.x0 - gaps_.x - b.x1, center.y});
            break;
        case Outward::Up:
            part.Move({center.x, a.y1 + gaps_.y - b.y0});
            break;
        case Outward::Down:
            part.Move({center.x, a.y0 - gaps_.y - b.y1});
            break;
    }
    drawing.Add(part);
}

/// Parts side by side on shelves across the way outwards, small ones nearest.
Drawing BlockTree::Shelves(std::vector<Drawing> parts, Outward outward) const {
    const bool upright = outward == Outward::Up || outward == Outward::Down;
    const auto along = [&](const Drawing& part) {
        return upright ? part.bounds.Width() + gaps_.x : part.bounds.Height() + gaps_.y;
    };
    std::stable_sort(parts.begin(), parts.end(), [](const Drawing& a, const Drawing& b) {
        return a.bounds.Width() * a.bounds.Height() < b.bounds.Width() * b.bounds.Height();
    });
    double area = 0, longest = 0;
    for (const Drawing& part : parts) {
        area += (part.bounds.Width() + gaps_.x) * (part.bounds.Height() + gaps_.y);
        longest = std::max(longest, along(part));
    }
    const double length = std::max(longest, std::sqrt(area * 1.6));
    Drawing shelves, shelf;
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
    for (Drawing& part : parts) {
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
Drawing BlockTree::Hang(int box, Outward outward, int under) const {
    Drawing drawing;
    std::vector<Drawing> parts;
    std::vector<int> blocks = blocksOf_[At(box)];
    std::stable_sort(blocks.begin(), blocks.end(),
                     [&](int a, int b) { return blocks_[At(a)].size() > blocks_[At(b)].size(); });
    for (const int block : blocks) {
        if (block == under) continue;
        const std::vector<int>& boxes = blocks_[At(block)];
        if (boxes.size() == 2) {
            parts.push_back(Hang(boxes[0] == box ? boxes[1] : boxes[0], outward, block));
        } else if (drawing.boxes.empty()) {
            drawing = Circle(block, box, true, outward);
        } else {
            parts.push_back(Circle(block, box, false, outward));
        }
    }
    const bool onCircle = !drawing.boxes.empty();
    if (!onCircle) drawing = BoxOf(box);
    if (parts.empty()) return drawing;
    // What does not fit on the box's circle stands beside it, on the near side, where the box is.
    const Outward side = onCircle ? static_cast<Outward>((static_cast<int>(outward) + 1) % 4) : outward;
    Drawing shelves = Shelves(std::move(parts), side);
    if (!onCircle) {
        PutBeyond(drawing, std::move(shelves), outward);
        return drawing;
    }
    const Rect &a = drawing.bounds, &b = shelves.bounds;
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
    drawing.Add(shelves);
    return drawing;
}

/// A block's boxes on an ellipse, each with what hangs on it outwards. The owner, through which the block is
/// reached, has its place on the near side; when it stands on another circle already, the place stays open.
Drawing BlockTree::Circle(int block, int owner, bool ownerIsOnIt, Outward outward) const {
    std::vector<int> boxes = blocks_[At(block)];
    const auto first = std::find(boxes.begin(), boxes.end(), owner);
    if (first != boxes.end()) std::rotate(boxes.begin(), first, boxes.end());
    std::vector<Drawing> parts;
    std::vector<double> turns;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const double turn =
            TurnOf(outward) + 0.5 + static_cast<double>(i) / static_cast<double>(boxes.size());
        if (boxes[i] == owner && !ownerIsOnIt) continue;
        parts.push_back(boxes[i] == owner ? BoxOf(owner) : Hang(boxes[i], OutwardOf(turn), block));
        turns.push_back(turn);
    }
    return Around(parts, turns, -1);
}

Drawing BlockTree::Around(const std::vector<Drawing>& parts, const std::vector<double>& turns,
                          int middle) const {
    std::vector<Box> sizes;
    for (const Drawing& part : parts) sizes.push_back({part.bounds.Width(), part.bounds.Height()});
    RingShape hole;
    Drawing drawing;
    if (middle >= 0) {
        hole = {graph_.boxes[At(middle)].width / 2, graph_.boxes[At(middle)].height / 2, 2};
        drawing = BoxOf(middle);
    }
    std::vector<double> distance;
    const Ring ring(hole, sizes, gaps_.x, gaps_.y, 1 + static_cast<int>(parts.size()) / boxesOfALane);
    for (std::size_t i = 0; i < parts.size(); ++i)
        distance.push_back(ring.Distance(sizes[i > 0 ? i - 1 : parts.size() - 1], sizes[i]));
    const std::vector<Point> centers = ring.Place(sizes, SeparateAround(turns, distance));
    std::vector<Rect> rects;
    for (std::size_t i = 0; i < parts.size(); ++i)
        rects.push_back(RectAround(centers[i], sizes[i].width, sizes[i].height));
    if (middle >= 0)
        rects.push_back(RectAround({}, graph_.boxes[At(middle)].width, graph_.boxes[At(middle)].height));
    SpreadBoxes(rects, gaps_.x, gaps_.y);
    if (middle >= 0) drawing.Move(rects.back().Center());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        Drawing part = parts[i];
        part.Move(rects[i].Center() - part.bounds.Center());
        drawing.Add(part);
    }
    return drawing;
}

std::vector<Point> BlockTree::Place() const {
    std::size_t greatest = 0;
    for (std::size_t i = 0; i < blocks_.size(); ++i)
        if (blocks_[i].size() > blocks_[greatest].size()) greatest = i;
    Drawing drawing;
    if (!blocks_.empty() && blocks_[greatest].size() > 2) {
        drawing = Circle(static_cast<int>(greatest), -1, true, Outward::Down);
    } else {
        // A tree: all that hangs on the box with the most reach goes around it.
        const int middle = MostReach(neighbours_);
        const auto& bridges = blocksOf_[At(middle)];
        std::vector<Drawing> parts;
        std::vector<double> turns;
        for (std::size_t i = 0; i < bridges.size(); ++i) {
            const auto& ends = blocks_[At(bridges[i])];
            turns.push_back(static_cast<double>(i) / static_cast<double>(bridges.size()));
            parts.push_back(Hang(ends[0] == middle ? ends[1] : ends[0], OutwardOf(turns.back()), bridges[i]));
        }
        drawing = Around(parts, turns, middle);
    }
    std::vector<Point> centers(graph_.boxes.size());
    std::vector<bool> placed(graph_.boxes.size());
    for (const auto& [box, center] : drawing.boxes) {
        centers[At(box)] = center;
        placed[At(box)] = true;
    }
    // Boxes of other components, should there be any, in shelves below.
    std::vector<Drawing> others;
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
