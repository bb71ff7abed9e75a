#include "layout/labels/labels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

constexpr double kClear = 0.03;   // between a label and what it must not cover
constexpr double kEdge = 0.02;    // of a label beside its line that the line still runs through
constexpr double kBeside = 0.09;  // between a label that found no space on its line and the line
constexpr double kNear = 0.1;     // on each side, from where on one would look for the line
constexpr double kNowhere = 1e9;
constexpr double kThroughLabel = 1;  // what a line through a label costs, beside the costs of its spots
constexpr int kPartsAtFirst = 60, kPartsToClear = 240;  // of a line, of which each has its spots

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

class LabelPlacer {
  public:
    LabelPlacer(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                const std::vector<std::vector<Point>>& paths, const Rect& page)
        : lines_(lines),
          paths_(paths),
          obstacles_(boxes),
          labelsNear_(page, 1.0),
          segmentsNear_(page, 1.0),
          labels_(lines.size()),
          searches_(200 + 2 * static_cast<int>(lines.size())) {
        for (std::size_t i = 0; i < paths.size(); ++i) {
            for (std::size_t k = 1; k < paths[i].size(); ++k) {
                segmentsNear_.AddSegment(paths[i][k - 1], paths[i][k], static_cast<int>(segments_.size()));
                segments_.push_back({paths[i][k - 1], paths[i][k], static_cast<int>(i)});
            }
        }
    }

    Point Place(int line) const;
    /// Puts the label there, from where it may have been.
    void Put(int line, Point middle);
    Point MiddleOf(int line, Point otherwise) const {
        return labels_[At(line)] ? labels_[At(line)]->Center() : otherwise;
    }

    /// Whether the label touches its own line and no other one runs through it.
    bool IsClear(int line) const;
    /// Moves the label to a spot where it is clear, and others out of its way, as long a chain of them as
    /// `others` says. Nothing moves when there is no such spot.
    bool Clear(int line, int others);

  private:
    struct Segment {
        Point a, b;
        int line;
    };
    struct Spot {
        Point middle;
        double cost;
    };
    struct Move {
        int line;
        Point from;
    };
    bool HasLabel(int line) const {
        return lines_[At(line)].labelWidth > 0 && lines_[At(line)].labelHeight > 0;
    }
    Rect LabelAt(int line, Point middle) const {
        return RectAround(middle, lines_[At(line)].labelWidth, lines_[At(line)].labelHeight);
    }
    std::vector<Spot> SpotsAlong(int line, int parts) const;
    std::vector<int> LabelsAt(const Rect& area, int but) const;
    bool IsFree(int line, Point middle) const;
    int LinesThrough(const Rect& label, int line, int most) const;
    Point NearestFree(int line, Point wish) const;
    bool Clear(int line, int others, std::vector<Move>& moves);

    const std::vector<Line>& lines_;
    const std::vector<std::vector<Point>>& paths_;
    Obstacles obstacles_;
    SpatialIndex labelsNear_, segmentsNear_;  ///< Labels also where they have been.
    std::vector<Segment> segments_;
    std::vector<std::optional<Rect>> labels_;  ///< One for each line, once it has its place.
    int searches_;                             ///< That are left for clearing labels.
};

/// On the line, then right beside it, then at a little distance; dearer away from the middle and beside the
/// line. The line is looked at in `parts` at most.
std::vector<LabelPlacer::Spot> LabelPlacer::SpotsAlong(int line, int parts) const {
    const std::vector<Point>& path = paths_[At(line)];
    const double width = lines_[At(line)].labelWidth, height = lines_[At(line)].labelHeight;
    const double whole = LengthOf(path);
    const double step = std::max(height / 2, whole / parts);
    std::vector<Spot> spots;
    double passed = 0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        const Point segment = path[i] - path[i - 1];
        const double length = Length(segment);
        if (length <= 0) continue;
        const Point direction = segment * (1 / length);
        // A label along a horizontal segment should not hang over its ends.
        const double alongX = std::abs(direction.x), alongY = std::abs(direction.y);
        const double half =
            std::min(alongX > 1e-9 ? width / 2 / alongX : 1e9, alongY > 1e-9 ? height / 2 / alongY : 1e9);
        const int most = static_cast<int>(length / 2 / step);
        for (int k = -most; k <= most; ++k) {
            const double at = length / 2 + k * step;
            if (at < 0 || at > length) continue;
            const double overhang = std::max(0.0, half - std::min(at, length - at));
            const double offMiddle = whole > 0 ? std::abs(passed + at - whole / 2) / whole : 0;
            const Point on = path[i - 1] + direction * at;
            const double base = offMiddle * 0.8 + overhang * 0.6 + (alongX < 0.3 ? 0.4 : 0);
            spots.push_back({on, base});
            const double touching = alongX * height / 2 + alongY * width / 2;
            const Point normal{-direction.y, direction.x};
            for (const double side : {1.0, -1.0}) {
                spots.push_back({on + normal * (side * (touching - kEdge)), base + 1.2});
                spots.push_back({on + normal * (side * (touching + kBeside)), base + 2.4});
            }
        }
        passed += length;
    }
    std::stable_sort(spots.begin(), spots.end(),
                     [](const Spot& a, const Spot& b) { return a.cost < b.cost; });
    return spots;
}

std::vector<int> LabelPlacer::LabelsAt(const Rect& area, int but) const {
    std::vector<int> found;
    labelsNear_.Near(area, [&](int i) {
        if (i != but && Overlap(area, *labels_[At(i)])) found.push_back(i);
        return true;
    });
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

int LabelPlacer::LinesThrough(const Rect& label, int line, int most) const {
    int count = 0;
    segmentsNear_.Near(label, [&](int i) {
        const Segment& segment = segments_[At(i)];
        if (segment.line != line && SegmentHits(segment.a, segment.b, label)) ++count;
        return count < most;
    });
    return count;
}

Point LabelPlacer::NearestFree(int line, Point wish) const {
    const double height = lines_[At(line)].labelHeight;
    for (int ring = 1;; ++ring) {
        const double reach = ring * height;
        const int count = 8 * std::min(ring, 16);
        for (int k = 0; k < count; ++k) {
            const double angle = 2 * M_PI * k / count;
            const Point middle = wish + Point{std::cos(angle) * reach * 2, std::sin(angle) * reach};
            if (IsFree(line, middle)) return middle;
        }
    }
}

bool LabelPlacer::IsFree(int line, Point middle) const {
    const Rect area = LabelAt(line, middle).Grown(kClear);
    return !obstacles_.Cover(area) && LabelsAt(area, line).empty();
}

void LabelPlacer::Put(int line, Point middle) {
    if (!HasLabel(line)) return;
    labels_[At(line)] = LabelAt(line, middle);
    labelsNear_.Add(*labels_[At(line)], line);
}

Point LabelPlacer::Place(int line) const {
    const std::vector<Spot> spots = SpotsAlong(line, kPartsAtFirst);
    Point middle = spots.empty() ? (paths_[At(line)].empty() ? Point{} : paths_[At(line)].front())
                                 : spots.front().middle;
    if (!HasLabel(line)) return middle;
    double best = kNowhere;
    for (const Spot& spot : spots) {
        if (spot.cost >= best) break;
        if (!IsFree(line, spot.middle)) continue;
        const double cost = spot.cost + kThroughLabel * LinesThrough(LabelAt(line, spot.middle), line, 8);
        if (cost < best) {
            best = cost;
            middle = spot.middle;
        }
    }
    return best < kNowhere ? middle : NearestFree(line, middle);
}

bool LabelPlacer::IsClear(int line) const {
    if (!HasLabel(line)) return true;
    const Rect label = *labels_[At(line)], around = label.Grown(kNear);
    if (LinesThrough(label, line, 1) > 0) return false;
    const std::vector<Point>& path = paths_[At(line)];
    for (std::size_t i = 1; i < path.size(); ++i)
        if (SegmentHits(path[i - 1], path[i], around)) return true;
    return false;
}

bool LabelPlacer::Clear(int line, int others) {
    std::vector<Move> moves;
    return Clear(line, others, moves);
}

bool LabelPlacer::Clear(int line, int others, std::vector<Move>& moves) {
    constexpr std::size_t kMostInTheWay = 2, kMostTries = 12;
    if (--searches_ < 0) return false;
    const Point before = labels_[At(line)]->Center();
    const auto isMoving = [&](int other) {
        return std::any_of(moves.begin(), moves.end(), [&](const Move& move) { return move.line == other; });
    };
    struct Taken {
        Point middle;
        std::vector<int> by;
    };
    std::vector<Taken> taken;
    for (const Spot& spot : SpotsAlong(line, kPartsToClear)) {
        const Rect area = LabelAt(line, spot.middle);
        if (obstacles_.Cover(area.Grown(kClear)) || LinesThrough(area, line, 1) > 0) continue;
        std::vector<int> inTheWay = LabelsAt(area.Grown(kClear), line);
        if (inTheWay.empty()) {
            moves.push_back({line, before});
            Put(line, spot.middle);
            return true;
        }
        if (others > 0 && taken.size() < kMostTries && inTheWay.size() <= kMostInTheWay &&
            std::none_of(inTheWay.begin(), inTheWay.end(), isMoving))
            taken.push_back({spot.middle, std::move(inTheWay)});
    }
    for (const Taken& spot : taken) {
        const std::size_t undisturbed = moves.size();
        moves.push_back({line, before});
        Put(line, spot.middle);
        if (std::all_of(spot.by.begin(), spot.by.end(),
                        [&](int other) { return isMoving(other) || Clear(other, others - 1, moves); }))
            return true;
        for (; moves.size() > undisturbed; moves.pop_back()) Put(moves.back().line, moves.back().from);
    }
    return false;
}

Rect PageOf(const std::vector<Rect>& boxes, const std::vector<std::vector<Point>>& paths) {
    Rect page = BoundsOf(boxes);
    for (const auto& path : paths)
        for (const Point& p : path)
            page = {std::min(page.x0, p.x), std::min(page.y0, p.y), std::max(page.x1, p.x),
                    std::max(page.y1, p.y)};
    return page;
}

}  // namespace

void PlaceLabels(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                 const std::vector<std::vector<Point>>& paths, const std::vector<std::size_t>& which,
                 std::vector<Point>& middles) {
    LabelPlacer placer(boxes, lines, paths, PageOf(boxes, paths));
    std::vector<char> isWanted(lines.size());
    for (const std::size_t line : which) isWanted[line] = 1;
    for (std::size_t line = 0; line < lines.size(); ++line)
        if (!isWanted[line]) placer.Put(static_cast<int>(line), middles[line]);
    std::vector<double> lengths;
    lengths.reserve(paths.size());
    for (const auto& path : paths) lengths.push_back(LengthOf(path));
    std::vector<std::size_t> order = which;
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return lengths[a] < lengths[b]; });
    for (const std::size_t i : order) {
        const int line = static_cast<int>(i);
        middles[i] = placer.Place(line);
        placer.Put(line, middles[i]);
    }
}

std::vector<std::size_t> ClearLabels(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                                     const std::vector<std::vector<Point>>& paths,
                                     std::vector<Point>& middles) {
    constexpr int kLongestChain = 3;
    LabelPlacer placer(boxes, lines, paths, PageOf(boxes, paths));
    for (std::size_t i = 0; i < lines.size(); ++i) placer.Put(static_cast<int>(i), middles[i]);
    std::vector<std::size_t> left;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int line = static_cast<int>(i);
        if (!placer.IsClear(line) && !placer.Clear(line, kLongestChain)) left.push_back(i);
    }
    for (std::size_t i = 0; i < lines.size(); ++i)
        middles[i] = placer.MiddleOf(static_cast<int>(i), middles[i]);
    return left;
}

}  // namespace norvelis::layout
