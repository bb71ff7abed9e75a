#include "layout/labels/label_spots.h"
#include "layout/graph/graph.h"

#include <numeric>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

constexpr double kMargin = 0.1;
constexpr double kEdge = 0.02;   // of a label beside its line that the line still runs through
constexpr double kTouch = 1e-6;  // what touches only does not cover

// What it costs, in inches, to make space for a label.
constexpr double kOverVertical = 0.6;     // it is wide, and lies across its line
constexpr double kOffCenter = 0.1;        // it lies to one side of it
constexpr double kPushHorizontal = 0.04;  // to move a horizontal line, or a box
constexpr double kPushVertical = 0.35;    // to move a vertical line, or a box
constexpr double kPushNeighbour = 2;  // a line that leaves the same side of the same box, and cannot move far

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

class SpotChooser {
  public:
    explicit SpotChooser(Sketch& sketch);
    /// False when all segments are barred.
    bool Choose(std::size_t line, const std::vector<char>& barredSegments);
    void Keep(std::size_t line);

  private:
    struct Segment {
        Rect area;
        std::size_t line;
        bool vertical;
        int boxes[2];  ///< At its ends, -1 where it goes on.
    };
    struct Offer {
        double at, cost;
        double offset = 0;
    };
    struct Stretch {
        double lo, hi, cost;
    };
    Offer OnSegment(const Segment& segment, double side) const;
    void LookAround(const Segment& segment, const Rect& band, std::vector<Stretch>& crossed,
                    std::vector<Stretch>& beside) const;

    Sketch& sketch_;
    SpatialIndex segmentsNear_, labelsNear_;
    Obstacles boxes_;
    std::vector<Segment> segments_;
    std::vector<std::size_t> firstSegment_;  ///< Of each line.
    std::vector<Rect> labels_;
};

SpotChooser::SpotChooser(Sketch& sketch)
    : sketch_(sketch),
      segmentsNear_(PageOf(sketch), 1.5),
      labelsNear_(PageOf(sketch), 1.5),
      boxes_(sketch.boxes) {
    for (std::size_t line = 0; line < sketch.paths.size(); ++line) {
        const auto& path = sketch.paths[line];
        firstSegment_.push_back(segments_.size());
        for (std::size_t segment = 0; segment + 1 < path.size(); ++segment) {
            segmentsNear_.AddSegment(path[segment], path[segment + 1], static_cast<int>(segments_.size()));
            segments_.push_back({RectOf(path[segment], path[segment + 1]),
                                 line,
                                 IsVertical(sketch, line, segment),
                                 {segment == 0 ? sketch.lines[line].from : -1,
                                  segment + 2 == path.size() ? sketch.lines[line].to : -1}});
        }
    }
    firstSegment_.push_back(segments_.size());
}

/// What crosses the band along the segment, and what runs beside it there.
void SpotChooser::LookAround(const Segment& segment, const Rect& band, std::vector<Stretch>& crossed,
                             std::vector<Stretch>& beside) const {
    const auto stretch = [&](const Rect& area, double cost) {
        return segment.vertical ? Stretch{area.y0, area.y1, cost} : Stretch{area.x0, area.x1, cost};
    };
    const auto isAtOneBox = [&](const Segment& other) {
        for (const int a : segment.boxes)
            for (const int b : other.boxes)
                if (a >= 0 && a == b) return true;
        return false;
    };
    const double push = segment.vertical ? kPushVertical : kPushHorizontal;
    segmentsNear_.Near(band, [&](int i) {
        const Segment& other = segments_[At(i)];
        if (other.line == segment.line || !Overlap(other.area.Grown(1e-9), band)) return true;
        if (other.vertical != segment.vertical) {
            crossed.push_back(stretch(other.area, 0));
        } else {
            beside.push_back(stretch(other.area, isAtOneBox(other) ? kPushNeighbour : push));
        }
        return true;
    });
    labelsNear_.Near(band, [&](int i) {
        if (Overlap(labels_[At(i)], band)) crossed.push_back(stretch(labels_[At(i)], 0));
        return true;
    });
    boxes_.Near(band, [&](int i) {
        const Rect& box = sketch_.boxes[At(i)];
        if (Overlap(box, band)) beside.push_back(stretch(box, push));
        return true;
    });
    const auto isBefore = [](const Stretch& a, const Stretch& b) {
        return a.lo != b.lo ? a.lo < b.lo : a.hi != b.hi ? a.hi < b.hi : a.cost < b.cost;
    };
    const auto isSame = [](const Stretch& a, const Stretch& b) {
        return a.lo == b.lo && a.hi == b.hi && a.cost == b.cost;
    };
    for (auto* stretches : {&crossed, &beside}) {
        std::sort(stretches->begin(), stretches->end(), isBefore);
        stretches->erase(std::unique(stretches->begin(), stretches->end(), isSame), stretches->end());
    }
}

/// `side`: 0 across the line, -1 and 1 left and right of a vertical one, which runs along the label's edge.
SpotChooser::Offer SpotChooser::OnSegment(const Segment& segment, double side) const {
    const Line& sizes = sketch_.lines[segment.line];
    const double need = (segment.vertical ? sizes.labelHeight : sizes.labelWidth) + 2 * kMargin;
    const double half = (segment.vertical ? sizes.labelWidth : sizes.labelHeight) / 2;
    const double offset = side * (half - kEdge);
    const Rect& area = segment.area;
    const Rect band =
        segment.vertical
            ? Rect{area.x0 + offset - half - kMargin, area.y0, area.x1 + offset + half + kMargin, area.y1}
            : Rect{area.x0, area.y0 - half - kMargin, area.x1, area.y1 + half + kMargin};
    const double first = segment.vertical ? area.y0 : area.x0, last = segment.vertical ? area.y1 : area.x1;
    std::vector<Stretch> crossed, beside;
    LookAround(segment, band, crossed, beside);

    const double middle = (first + last) / 2, length = std::max(last - first, 1e-6);
    Offer best{middle, 1e9, offset};
    const auto offer = [&](double at, double lacking) {
        double cost = lacking * (segment.vertical ? 1 : 1.5) + 0.3 * std::abs(at - middle) / length;
        const double reach = (need - lacking) / 2;
        for (const Stretch& other : beside) {
            if (other.lo >= at + reach || cost >= best.cost) break;
            if (other.hi > at - reach) cost += other.cost;
        }
        if (cost < best.cost) best = {at, cost, offset};
    };
    const auto offerIn = [&](double lo, double hi) {
        const double spare = hi - lo - need;
        if (spare <= 0) return offer((lo + hi) / 2, -spare);
        offer(std::clamp(middle, lo + need / 2, hi - need / 2), 0);
        const int steps = std::clamp(static_cast<int>(2 * spare / need), 1, 12);
        for (int i = 0; i <= steps; ++i) offer(lo + need / 2 + spare * i / steps, 0);
    };
    const auto offerBetween = [&](const std::vector<Stretch>& barred) {
        double from = first;
        for (const Stretch& other : barred) {
            if (from >= last) break;
            if (other.lo > from) offerIn(from, std::min(other.lo, last));
            from = std::max(from, other.hi);
        }
        if (from < last) offerIn(from, last);
    };
    offerBetween(crossed);
    // Where neighbours have bent away, there is space that they would not have left.
    std::vector<Stretch> barred = crossed;
    for (const Stretch& other : beside)
        if (other.cost == kPushNeighbour) barred.push_back(other);
    if (barred.size() > crossed.size()) {
        std::sort(barred.begin(), barred.end(),
                  [](const Stretch& a, const Stretch& b) { return a.lo < b.lo; });
        offerBetween(barred);
    }
    if (segment.vertical) best.cost += kOverVertical + (side != 0 ? kOffCenter : 0);
    return best;
}

bool SpotChooser::Choose(std::size_t line, const std::vector<char>& barredSegments) {
    const Line& sizes = sketch_.lines[line];
    if (sizes.labelWidth <= 0 || sizes.labelHeight <= 0) return false;
    if (sketch_.firstSegments[line] == FirstSegment::Slanting) return false;
    Offer best{0, 1e300};
    for (std::size_t segment = firstSegment_[line]; segment < firstSegment_[line + 1]; ++segment) {
        const std::size_t inLine = segment - firstSegment_[line];
        if (inLine < barredSegments.size() && barredSegments[inLine]) continue;
        for (const double side : {0.0, 1.0, -1.0}) {
            if (side != 0 && (!segments_[segment].vertical || best.cost <= kOverVertical + kOffCenter))
                continue;
            const Offer offer = OnSegment(segments_[segment], side);
            if (offer.cost >= best.cost) continue;
            best = offer;
            sketch_.labels[line] = {static_cast<int>(inLine), offer.at, offer.offset};
        }
    }
    return best.cost < 1e300;
}

void SpotChooser::Keep(std::size_t line) {
    if (sketch_.labels[line].segment < 0) return;
    const Rect label = LabelArea(sketch_, line);
    labelsNear_.Add(label, static_cast<int>(labels_.size()));
    labels_.push_back(label);
}

}  // namespace

void ChooseLabelSpots(Sketch& sketch) {
    std::vector<double> lengths;
    for (const auto& path : sketch.paths) lengths.push_back(LengthOf(path));
    std::vector<std::size_t> order(sketch.lines.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return lengths[a] < lengths[b]; });
    SpotChooser chooser(sketch);
    for (const std::size_t line : order) {
        chooser.Choose(line, {});
        chooser.Keep(line);
    }
}

std::vector<std::size_t> CoveredLabels(const Sketch& sketch) {
    const Rect page = PageOf(sketch);
    const Obstacles boxes(sketch.boxes);
    SpatialIndex labelsNear(page, 1.5);
    std::vector<char> isCovered(sketch.lines.size());
    std::vector<Rect> areas(sketch.lines.size());
    for (std::size_t line = 0; line < sketch.lines.size(); ++line) {
        if (sketch.labels[line].segment < 0) continue;
        const Rect area = areas[line] = LabelArea(sketch, line).Grown(-kTouch);
        isCovered[line] = boxes.Cover(area);
        labelsNear.Near(area, [&](int other) {
            if (Overlap(area, areas[At(other)])) isCovered[line] = 1;
            return !isCovered[line];
        });
        labelsNear.Add(area, static_cast<int>(line));
    }
    for (std::size_t line = 0; line < sketch.paths.size(); ++line) {
        const auto& path = sketch.paths[line];
        for (std::size_t segment = 0; segment + 1 < path.size(); ++segment) {
            labelsNear.Near(RectOf(path[segment], path[segment + 1]), [&](int other) {
                if (At(other) != line && !isCovered[At(other)] &&
                    SegmentHits(path[segment], path[segment + 1], areas[At(other)]))
                    isCovered[At(other)] = 1;
                return true;
            });
        }
    }
    std::vector<std::size_t> covered;
    for (std::size_t line = 0; line < isCovered.size(); ++line)
        if (isCovered[line]) covered.push_back(line);
    return covered;
}

bool MoveLabels(Sketch& sketch, const std::vector<std::size_t>& covered,
                std::vector<std::vector<char>>& tried) {
    SpotChooser chooser(sketch);
    std::vector<char> isCovered(sketch.lines.size());
    for (const std::size_t line : covered) isCovered[line] = 1;
    for (std::size_t line = 0; line < sketch.lines.size(); ++line)
        if (!isCovered[line]) chooser.Keep(line);
    tried.resize(sketch.lines.size());
    bool moved = false;
    for (const std::size_t line : covered) {
        tried[line].resize(sketch.paths[line].size());
        tried[line][At(sketch.labels[line].segment)] = 1;
        moved = chooser.Choose(line, tried[line]) || moved;
        chooser.Keep(line);
    }
    return moved;
}

}  // namespace norvelis::layout
