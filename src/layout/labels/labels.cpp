#include "layout/labels/labels.h"
#include "layout/graph/graph.h"

#include <cstddef>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

constexpr double kClear = 0.03;  // between a label and what it must not cover
constexpr double kEdge = 0.02;   // of a label beside its line that the line still runs through

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

class LabelPlacer {
  public:
    LabelPlacer(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                const std::vector<std::vector<Point>>& paths, const Rect& page)
        : lines_(lines), paths_(paths), obstacles_(boxes), labelsNear_(page, 1.0), segmentsNear_(page, 1.0) {
        for (std::size_t i = 0; i < paths.size(); ++i) {
            for (std::size_t k = 1; k < paths[i].size(); ++k) {
                segmentsNear_.AddSegment(paths[i][k - 1], paths[i][k], static_cast<int>(segments_.size()));
                segments_.push_back({paths[i][k - 1], paths[i][k], static_cast<int>(i)});
            }
        }
    }

    Point Place(int line) const;
    void Keep(int line, Point middle);

  private:
    struct Segment {
        Point a, b;
        int line;
    };
    struct Spot {
        Point middle;
        double cost;
    };
    std::vector<Spot> SpotsAlong(int line) const;
    bool IsFree(const Rect& label) const;
    int LinesThrough(const Rect& label, int line, int most) const;
    Point NearestFree(Point wish, double width, double height) const;
    const std::vector<Line>& lines_;
    const std::vector<std::vector<Point>>& paths_;
    Obstacles obstacles_;
    SpatialIndex labelsNear_, segmentsNear_;
    std::vector<Segment> segments_;
    std::vector<Rect> labels_;
};

/// On the line, and then right beside it; dearer away from the middle and beside the line.
std::vector<LabelPlacer::Spot> LabelPlacer::SpotsAlong(int line) const {
    const std::vector<Point>& path = paths_[At(line)];
    const double width = lines_[At(line)].labelWidth, height = lines_[At(line)].labelHeight;
    const double whole = LengthOf(path);
    const double step = std::max(height / 2, whole / 60);
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
        const int count = 1 + 2 * static_cast<int>(length / 2 / step);
        for (int k = 0; k < count; ++k) {
            const double at = length / 2 + (k - count / 2) * step;
            if (at < 0 || at > length) continue;
            const double overhang = std::max(0.0, half - std::min(at, length - at));
            const double offMiddle = whole > 0 ? std::abs(passed + at - whole / 2) / whole : 0;
            const Point on = path[i - 1] + direction * at;
            const double base = offMiddle * 0.8 + overhang * 0.6 + (alongX < 0.3 ? 0.4 : 0);
            spots.push_back({on, base});
            const double offset = alongX * (height / 2 - kEdge) + alongY * (width / 2 - kEdge);
            const Point normal{-direction.y, direction.x};
            spots.push_back({on + normal * offset, base + 1.2});
            spots.push_back({on - normal * offset, base + 1.2});
        }
        passed += length;
    }
    std::stable_sort(spots.begin(), spots.end(),
                     [](const Spot& a, const Spot& b) { return a.cost < b.cost; });
    return spots;
}

bool LabelPlacer::IsFree(const Rect& label) const {
    const Rect area = label.Grown(kClear);
    bool isFree = !obstacles_.Cover(area);
    if (isFree) labelsNear_.Near(area, [&](int i) { return isFree = !Overlap(area, labels_[At(i)]); });
    return isFree;
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

Point LabelPlacer::NearestFree(Point wish, double width, double height) const {
    for (int ring = 1;; ++ring) {
        const double reach = ring * height;
        const int count = 8 * std::min(ring, 16);
        for (int k = 0; k < count; ++k) {
            const double angle = 2 * M_PI * k / count;
            const Point middle = wish + Point{std::cos(angle) * reach * 2, std::sin(angle) * reach};
            if (IsFree(RectAround(middle, width, height))) return middle;
        }
    }
}

void LabelPlacer::Keep(int line, Point middle) {
    if (lines_[At(line)].labelWidth <= 0 || lines_[At(line)].labelHeight <= 0) return;
    const Rect label = RectAround(middle, lines_[At(line)].labelWidth, lines_[At(line)].labelHeight);
    labelsNear_.Add(label, static_cast<int>(labels_.size()));
    labels_.push_back(label);
}

Point LabelPlacer::Place(int line) const {
    const double width = lines_[At(line)].labelWidth, height = lines_[At(line)].labelHeight;
    const std::vector<Spot> spots = SpotsAlong(line);
    Point middle = spots.empty() ? (paths_[At(line)].empty() ? Point{} : paths_[At(line)].front())
                                 : spots.front().middle;
    if (width <= 0 || height <= 0) return middle;
    double best = 1e9;
    for (const Spot& spot : spots) {
        if (spot.cost >= best) break;
        const Rect label = RectAround(spot.middle, width, height);
        if (!IsFree(label)) continue;
        const double cost = spot.cost + LinesThrough(label, line, 8);
        if (cost < best) {
            best = cost;
            middle = spot.middle;
        }
    }
    return best < 1e9 ? middle : NearestFree(middle, width, height);
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
        if (!isWanted[line]) placer.Keep(static_cast<int>(line), middles[line]);
    std::vector<double> lengths;
    for (const auto& path : paths) lengths.push_back(LengthOf(path));
    std::vector<std::size_t> order = which;
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return lengths[a] < lengths[b]; });
    for (const std::size_t i : order) {
        const int line = static_cast<int>(i);
        middles[i] = placer.Place(line);
        placer.Keep(line, middles[i]);
    }
}

int DoubtfulLabels(const std::vector<Line>& lines, const std::vector<std::vector<Point>>& paths,
                   const std::vector<Point>& middles) {
    std::vector<Rect> labels;
    for (std::size_t i = 0; i < lines.size(); ++i)
        labels.push_back(RectAround(middles[i], lines[i].labelWidth, lines[i].labelHeight));
    SpatialIndex near(BoundsOf(labels), 1.0);
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].labelWidth > 0) near.Add(labels[i], static_cast<int>(i));
    std::vector<char> isCrossed(lines.size()), isOnLine(lines.size());
    for (std::size_t line = 0; line < paths.size(); ++line) {
        for (std::size_t i = 1; i < paths[line].size(); ++i) {
            const Point a = paths[line][i - 1], b = paths[line][i];
            near.Near(RectOf(a, b).Grown(2 * kClear), [&](int label) {
                if (At(label) == line) {
                    if (SegmentHits(a, b, labels[line].Grown(2 * kClear))) isOnLine[line] = 1;
                } else if (!isCrossed[At(label)] && SegmentHits(a, b, labels[At(label)])) {
                    isCrossed[At(label)] = 1;
                }
                return true;
            });
        }
    }
    int doubtful = 0;
    for (std::size_t i = 0; i < lines.size(); ++i)
        doubtful += lines[i].labelWidth > 0 && (isCrossed[i] || !isOnLine[i]);
    return doubtful;
}

}  // namespace norvelis::layout
