#include "layout/blocks/leaf_blocks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "layout/blocks/leaf_groups.h"
#include "layout/geometry/corners.h"
#include "layout/graph/route_rule.h"

namespace norvelis::layout {

namespace {

constexpr std::size_t kLeastLeaves = 12;

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

Box Turned(const Box& box) {
    return {box.height, box.width, box.noteHeight, box.noteWidth, box.noteSide};
}

/// As many full rows as there can be, and one for the rest.
std::vector<std::size_t> RowsOfLength(std::size_t length, std::size_t count) {
    std::vector<std::size_t> rows(count / length, length);
    if (count % length > 0) rows.push_back(count % length);
    return rows;
}

/// What was computed on two ways and differs by a hair becomes one.
void Align(std::vector<Point>& path) {
    constexpr double kHair = 1e-9;
    for (std::size_t i = 1; i < path.size(); ++i) {
        if (std::abs(path[i].x - path[i - 1].x) < kHair) path[i].x = path[i - 1].x;
        if (std::abs(path[i].y - path[i - 1].y) < kHair) path[i].y = path[i - 1].y;
    }
}

}  // namespace

LeafBlocks::LeafBlocks(const Graph& graph, const Style& style, const FormerPlaces& former)
    : graph_(graph),
      style_(style),
      former_(former),
      inLayers_(style.placeStyle != PlaceStyle::Radial && style.placeStyle != PlaceStyle::Circular &&
                RuleOf(style.routeStyle).family != RouteFamily::Straight),
      sideways_(inLayers_ && style.placeStyle == PlaceStyle::LeftToRight),
      boxOf_(graph.boxes.size()),
      lineOf_(graph.lines.size()) {
    const std::vector<LeafGroup> groups = LeafGroupsOf(graph, kLeastLeaves, inLayers_);
    for (const LeafGroup& group : groups) {
        for (const int leaf : group.leaves) boxOf_[At(leaf)] = -1;
        for (const int line : group.lines) lineOf_[At(line)] = -1;
    }
    for (std::size_t i = 0; i < boxOf_.size(); ++i) {
        if (boxOf_[i] < 0) continue;
        boxOf_[i] = static_cast<int>(folded_.boxes.size());
        folded_.boxes.push_back(graph.boxes[i]);
    }
    for (std::size_t k = 0; k < lineOf_.size(); ++k) {
        if (lineOf_[k] < 0) continue;
        Line line = graph.lines[k];
        line.from = boxOf_[At(line.from)];
        line.to = boxOf_[At(line.to)];
        lineOf_[k] = static_cast<int>(folded_.lines.size());
        folded_.lines.push_back(line);
    }
    for (const LeafGroup& group : groups) {
        // Two blocks with the hub between them are together as paper is.
        const auto blocks = std::count_if(groups.begin(), groups.end(),
                                          [&](const LeafGroup& other) { return other.hub == group.hub; });
        Fold(group, (sideways_ ? 1 / kPaperRatio : kPaperRatio) * static_cast<double>(blocks));
    }
}

LeafBlocks::Frame LeafBlocks::FormerFrame(const std::vector<int>& leaves, const std::vector<int>& lines,
                                          bool above) const {
    Frame frame{{}, sideways_, above};
    if (inLayers_) return frame;
    // A line comes to its leaf from where the trunk came from.
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        const auto& center = former_.centers[At(leaves[i])];
        const std::vector<Point>& route = former_.routes[At(lines[i])];
        if (!center || route.empty()) continue;
        const bool isMember = graph_.lines[At(lines[i])].to == leaves[i];
        frame.upwards = (isMember ? route.back() : route.front()).y < center->y;
        break;
    }
    return frame;
}

std::vector<std::size_t> LeafBlocks::OrderAsBefore(LeafGroup& group) const {
    if (former_.centers.empty()) return {};
    const Frame frame = FormerFrame(group.leaves, group.lines, group.above);
    std::vector<std::size_t> known, added;
    std::vector<Rect> boxes;  // of the known ones, in the coordinates of piles
    for (std::size_t i = 0; i < group.leaves.size(); ++i) {
        const auto& center = former_.centers[At(group.leaves[i])];
        (center ? known : added).push_back(i);
        if (!center) continue;
        const Box& size = graph_.boxes[At(group.leaves[i])];
        const Box box = sideways_ ? Turned(size) : size;
        boxes.push_back(RectAround(frame.InPile(*center), box.width, box.height));
    }
    if (known.empty()) return {};
    const std::vector<int> rowOf = RowsOf(boxes);
    std::vector<std::vector<std::size_t>> rows(At(*std::max_element(rowOf.begin(), rowOf.end()) + 1));
    for (std::size_t k = 0; k < known.size(); ++k) rows[At(rowOf[k])].push_back(k);
    std::size_t longest = 0;
    for (auto& row : rows) {
        std::stable_sort(row.begin(), row.end(), [&](std::size_t a, std::size_t b) {
            return boxes[a].Center().x < boxes[b].Center().x;
        });
        for (std::size_t& k : row) k = known[k];
        longest = std::max(longest, row.size());
    }
    for (const std::size_t leaf : added) {
        auto row =
            std::find_if(rows.begin(), rows.end(), [&](const auto& each) { return each.size() < longest; });
        if (row == rows.end()) row = rows.emplace(rows.end());
        row->push_back(leaf);
    }
    const LeafGroup given = group;
    std::vector<std::size_t> lengths;
    std::size_t at = 0;
    for (const auto& row : rows) {
        lengths.push_back(row.size());
        for (const std::size_t leaf : row) {
            group.leaves[at] = given.leaves[leaf];
            group.lines[at++] = given.lines[leaf];
        }
    }
    return lengths;
}

FormerPlaces LeafBlocks::FoldedFormer() const {
    if (blocks_.empty() || former_.centers.empty()) return former_;
    FormerPlaces folded;
    folded.centers.resize(folded_.boxes.size());
    folded.routes.resize(folded_.lines.size());
    for (std::size_t i = 0; i < boxOf_.size(); ++i)
        if (boxOf_[i] >= 0) folded.centers[At(boxOf_[i])] = former_.centers[i];
    for (std::size_t k = 0; k < lineOf_.size(); ++k)
        if (lineOf_[k] >= 0) folded.routes[At(lineOf_[k])] = former_.routes[k];
    for (const Block& block : blocks_) {
        for (const Part& part : block.parts) {
            const Frame frame = FormerFrame(part.leaves, part.lines, block.above);
            Point sum;
            int known = 0;
            for (std::size_t i = 0; i < part.leaves.size(); ++i) {
                const auto& center = former_.centers[At(part.leaves[i])];
                if (!center) continue;
                sum = sum + *center - frame.OnPage(part.pile.CenterOf(i));
                ++known;
                folded.routes[At(part.line)] = former_.routes[At(part.lines[i])];  // along the trunk
            }
            if (known > 0) folded.centers[At(part.box)] = sum * (1.0 / known);
        }
    }
    return folded;
}

void LeafBlocks::Fold(LeafGroup group, double ratio) {
    std::vector<std::size_t> rows = OrderAsBefore(group);
    const auto& [hub, above, leaves, lines] = group;
    std::vector<Pile::Cell> all;
    double left = 0, right = 0;  // what leaves with labels and notes take from the middle of a column
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        const Line& line = graph_.lines[At(lines[i])];
        Pile::Cell cell{graph_.boxes[At(leaves[i])], line.labelWidth, line.labelHeight};
        if (sideways_) cell = {Turned(cell.box), cell.labelHeight, cell.labelWidth};
        cell.box.noteSide = sideways_ ? NoteSide::Left : NoteSide::Below;
        const double half = std::max(cell.Width(), sideways_ ? 0 : cell.box.noteWidth) / 2;
        left = std::max({left, half, sideways_ ? cell.box.width / 2 + NoteSpace(cell.box) : 0});
        right = std::max(right, half);
        all.push_back(cell);
    }
    const double width = left + right;
    for (Pile::Cell& cell : all) {  // so that leaves are in columns
        cell.box.width = width;
        cell.aside = (left - right) / 2;
    }
    Style style = style_;
    if (sideways_) std::swap(style.boxGapX, style.boxGapY);
    // An even number of columns has space for the trunk in the middle.
    const double column = width + style.boxGapX;
    const double rowGap = inLayers_ ? 4 * style.lineGap : 0;  // of the channels between layers
    const double wished = RowWidthFor(all, ratio, rowGap, style) / column;
    const std::size_t columns =
        2 * std::max<std::size_t>(1, static_cast<std::size_t>(std::lround(wished / 2)));
    const std::size_t before = rows.empty() ? 0 : *std::max_element(rows.begin(), rows.end());
    // A trunk passes rows between two leaves.
    const bool isShaped = before > 0 && before <= columns + 3 && columns <= before + 3 &&
                          std::all_of(rows.begin(), rows.end() - 1, [](std::size_t row) { return row > 1; });
    if (!isShaped) rows = RowsOfLength(columns, all.size());
    blocks_.push_back({above, {}});
    int last = boxOf_[At(hub)];
    std::size_t first = 0;
    while (first < all.size()) {
        const std::vector<std::size_t> inPile =
            inLayers_ ? std::vector{rows[blocks_.back().parts.size()]} : rows;
        const std::size_t count = inLayers_ ? inPile.front() : all.size();
        const auto slice = [&](const auto& of) {
            const auto from = of.begin() + static_cast<std::ptrdiff_t>(first);
            return std::decay_t<decltype(of)>(from, from + static_cast<std::ptrdiff_t>(count));
        };
        const Pile::Trunk trunk = !inLayers_                   ? Pile::Trunk::FromAnywhere
                                  : first + count < all.size() ? Pile::Trunk::GoesOn
                                                               : Pile::Trunk::Ends;
        const Pile pile(slice(all), inPile, trunk, style);
        const int box = static_cast<int>(folded_.boxes.size());
        const int line = static_cast<int>(folded_.lines.size());
        folded_.boxes.push_back(sideways_ ? Turned(pile.Size()) : pile.Size());
        folded_.lines.push_back(above ? Line{box, last, 0, 0} : Line{last, box, 0, 0});
        blocks_.back().parts.push_back({pile, box, line, slice(leaves), slice(lines)});
        last = box;
        first += count;
    }
}

Point LeafBlocks::Frame::OnPage(Point inPile) const {
    if (upwards) inPile.y = -inPile.y;
    return middle + (sideways ? Point{inPile.y, -inPile.x} : Point{inPile.x, -inPile.y});
}

Point LeafBlocks::Frame::InPile(Point onPage) const {
    onPage = onPage - middle;
    Point inPile = sideways ? Point{-onPage.y, onPage.x} : Point{onPage.x, -onPage.y};
    if (upwards) inPile.y = -inPile.y;
    return inPile;
}

LeafBlocks::Frame LeafBlocks::FrameOf(const Block& block, const Part& part, const Placement& folded,
                                      Point entry) const {
    Frame frame{folded.centers[At(part.box)], sideways_, block.above};
    if (!inLayers_) frame.upwards = part.pile.EntersFromBelow(frame.InPile(entry));
    return frame;
}

std::vector<Point> LeafBlocks::LeadTo(const Block& block, const Part& part, const Placement& folded) const {
    std::vector<Point> lead = folded.routes[At(part.line)].points;
    if (block.above) std::reverse(lead.begin(), lead.end());
    return lead;
}

void LeafBlocks::Unfold(const Block& block, const Placement& folded, Placement& whole) const {
    std::vector<Point> trunk;
    for (std::size_t p = 0; p < block.parts.size(); ++p) {
        const Part& part = block.parts[p];
        const std::vector<Point> lead = LeadTo(block, part, folded);
        trunk.insert(trunk.end(), lead.begin(), lead.end());
        const Frame frame = FrameOf(block, part, folded, lead.back());
        const Point entry = frame.InPile(lead.back());
        const auto follow = [&](std::vector<Point> path, const std::vector<Point>& inPile) {
            for (const Point& point : inPile) path.push_back(frame.OnPage(point));
            return path;
        };
        for (std::size_t i = 0; i < part.leaves.size(); ++i) {
            const Line& line = graph_.lines[At(part.lines[i])];
            whole.centers[At(part.leaves[i])] = frame.OnPage(part.pile.CenterOf(i));
            whole.noteSides[At(part.leaves[i])] =
                sideways_ || frame.upwards ? NoteSide::Above : NoteSide::Below;
            Route& route = whole.routes[At(part.lines[i])];
            std::vector<Point> path = follow(trunk, part.pile.PathTo(i, entry));
            Align(path);
            path.erase(std::unique(path.begin(), path.end()), path.end());
            // On rings the curves of the lead keep off the boxes around it: its points stay.
            route.points = inLayers_ || !style_.IsCurved() ? CornersOf(path) : std::move(path);
            route.curved = style_.IsCurved() && route.points.size() > 2;
            if (route.curved) route.points = RoundCorners(route.points, style_.lineGap);
            if (line.from == part.leaves[i]) std::reverse(route.points.begin(), route.points.end());
            route.label = frame.OnPage(part.pile.LabelOf(i));
        }
        if (p + 1 == block.parts.size()) break;
        const Point exit = frame.InPile(LeadTo(block, block.parts[p + 1], folded).front());
        trunk = follow(std::move(trunk), part.pile.PathThrough(entry, exit));
    }
}

bool LeafBlocks::CanUnfold(const Placement& folded) const {
    if (!inLayers_) return true;
    for (const Block& block : blocks_) {
        for (const Part& part : block.parts) {
            const Line& line = folded_.lines[At(part.line)];
            const Point before = folded.centers[At(block.above ? line.to : line.from)];
            if (Frame{folded.centers[At(part.box)], sideways_, block.above}.InPile(before).y > 0)
                return false;
        }
    }
    return true;
}

Placement LeafBlocks::Unfold(Placement folded) const {
    if (blocks_.empty()) return folded;
    Placement whole;
    whole.centers.resize(graph_.boxes.size());
    whole.routes.resize(graph_.lines.size());
    whole.noteSides = NoteSidesOf(graph_);
    for (const Block& block : blocks_) Unfold(block, folded, whole);
    for (std::size_t i = 0; i < boxOf_.size(); ++i) {
        if (boxOf_[i] < 0) continue;
        whole.centers[i] = folded.centers[At(boxOf_[i])];
        whole.noteSides[i] = folded.noteSides[At(boxOf_[i])];
    }
    for (std::size_t k = 0; k < lineOf_.size(); ++k)
        if (lineOf_[k] >= 0) whole.routes[k] = std::move(folded.routes[At(lineOf_[k])]);
    return whole;
}

}  // namespace norvelis::layout
