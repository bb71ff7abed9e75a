#include "layout/routing/untangle.h"

#include <set>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

constexpr double kFarthest = 1.5;  // inches between neighbours that may change places

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// Exchanges of vertical segments.
class Exchanger {
  public:
    explicit Exchanger(Sketch& sketch);
    bool Round();

  private:
    struct Segment {
        std::size_t line, number;
    };
    /// A horizontal segment that starts at the end of a vertical one.
    struct Arm {
        double y, to;
    };
    struct Extent {
        double lo, hi;
        bool Holds(double y) const { return y > lo && y < hi; }
    };
    std::vector<Point>& Path(const Segment& segment) const { return sketch_.paths[segment.line]; }
    double X(const Segment& segment) const { return Path(segment)[segment.number].x; }
    Extent Heights(const Segment& segment) const;
    std::vector<Arm> Arms(const Segment& segment) const;
    bool MayStandAt(const Segment& segment, double x) const;
    bool IsAloneBetween(const Segment& a, const Segment& b) const;
    int Crossings(const Segment& a, double xa, const Segment& b, double xb) const;
    bool Exchange(const Segment& a, const Segment& b);
    std::vector<std::pair<int, int>> Neighbours() const;

    Sketch& sketch_;
    Obstacles boxes_;
    std::vector<Segment> segments_;
    SpatialIndex near_;
};

Exchanger::Exchanger(Sketch& sketch) : sketch_(sketch), boxes_(sketch.boxes), near_(PageOf(sketch), 1.0) {
    for (std::size_t line = 0; line < sketch.paths.size(); ++line) {
        if (sketch.firstSegments[line] == FirstSegment::Slanting) continue;
        for (std::size_t number = 0; number + 1 < sketch.paths[line].size(); ++number) {
            if (!IsVertical(sketch, line, number)) continue;
            const Segment segment{line, number};
            const Extent heights = Heights(segment);
            near_.Add({X(segment), heights.lo, X(segment), heights.hi}, static_cast<int>(segments_.size()));
            segments_.push_back(segment);
        }
    }
}

Exchanger::Extent Exchanger::Heights(const Segment& segment) const {
    const double a = Path(segment)[segment.number].y, b = Path(segment)[segment.number + 1].y;
    return {std::min(a, b), std::max(a, b)};
}

std::vector<Exchanger::Arm> Exchanger::Arms(const Segment& segment) const {
    const auto& path = Path(segment);
    std::vector<Arm> arms;
    if (segment.number > 0) arms.push_back({path[segment.number].y, path[segment.number - 1].x});
    if (segment.number + 2 < path.size())
        arms.push_back({path[segment.number + 1].y, path[segment.number + 2].x});
    return arms;
}

bool Exchanger::MayStandAt(const Segment& segment, double x) const {
    const auto& path = Path(segment);
    const auto fits = [&](int box) {
        const Rect& rect = sketch_.boxes[At(box)];
        return std::abs(x - rect.Center().x) <= rect.Width() / 2 * 0.96;
    };
    if (segment.number == 0 && !fits(sketch_.lines[segment.line].from)) return false;
    if (segment.number + 2 == path.size() && !fits(sketch_.lines[segment.line].to)) return false;
    const Extent heights = Heights(segment);
    const Rect swept{std::min(X(segment), x) - 1e-6, heights.lo + 1e-6, std::max(X(segment), x) + 1e-6,
                     heights.hi - 1e-6};
    return swept.y0 >= swept.y1 || !boxes_.Cover(swept);
}

bool Exchanger::IsAloneBetween(const Segment& a, const Segment& b) const {
    const Extent ha = Heights(a), hb = Heights(b);
    const Rect between{X(a), std::min(ha.lo, hb.lo), X(b), std::max(ha.hi, hb.hi)};
    bool alone = true;
    near_.Near(between, [&](int i) {
        const Segment& other = segments_[At(i)];
        const Extent heights = Heights(other);
        const double x = X(other);
        if (&other == &a || &other == &b || x < between.x0 || x > between.x1) return true;
        const auto meets = [&](const Extent& extent) {
            return heights.lo <= extent.hi && extent.lo <= heights.hi;
        };
        alone = !meets(ha) && !meets(hb);
        return alone;
    });
    return alone;
}

int Exchanger::Crossings(const Segment& a, double xa, const Segment& b, double xb) const {
    int count = 0;
    const auto add = [&](const Segment& segment, double x, const Segment& other, double otherX) {
        const Extent heights = Heights(other);
        for (const Arm& arm : Arms(segment))
            count += heights.Holds(arm.y) && std::min(x, arm.to) < otherX && otherX < std::max(x, arm.to);
    };
    add(a, xa, b, xb);
    add(b, xb, a, xa);
    return count;
}

bool Exchanger::Exchange(const Segment& a, const Segment& b) {
    const double xa = X(a), xb = X(b);
    if (xa >= xb || a.line == b.line) return false;
    if (Crossings(a, xb, b, xa) >= Crossings(a, xa, b, xb)) return false;
    for (const Arm& one : Arms(a))
        for (const Arm& other : Arms(b))
            if (one.y == other.y) return false;
    if (!MayStandAt(a, xb) || !MayStandAt(b, xa) || !IsAloneBetween(a, b)) return false;
    Path(a)[a.number].x = Path(a)[a.number + 1].x = xb;
    Path(b)[b.number].x = Path(b)[b.number + 1].x = xa;
    for (const Segment* moved : {&a, &b}) {
        const Extent heights = Heights(*moved);
        near_.Add({X(*moved), heights.lo, X(*moved), heights.hi}, static_cast<int>(moved - segments_.data()));
    }
    return true;
}

/// The pairs of segments with nothing between them at some height.
std::vector<std::pair<int, int>> Exchanger::Neighbours() const {
    struct Event {
        double y;
        bool opens;
        int segment;
    };
    std::vector<Event> events;
    for (std::size_t i = 0; i < segments_.size(); ++i) {
        const Extent heights = Heights(segments_[i]);
        if (heights.lo >= heights.hi) continue;
        events.push_back({heights.lo, true, static_cast<int>(i)});
        events.push_back({heights.hi, false, static_cast<int>(i)});
    }
    std::sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
        return a.y != b.y ? a.y < b.y : a.opens != b.opens ? !a.opens : a.segment < b.segment;
    });
    std::set<std::pair<double, int>> open;
    std::vector<std::pair<int, int>> pairs;
    const auto add = [&](int a, int b) {
        if (X(segments_[At(b)]) - X(segments_[At(a)]) < kFarthest) pairs.emplace_back(a, b);
    };
    for (const Event& event : events) {
        const std::pair key(X(segments_[At(event.segment)]), event.segment);
        const auto here = event.opens ? open.insert(key).first : open.find(key);
        const auto after = std::next(here);
        const bool hasBefore = here != open.begin(), hasAfter = after != open.end();
        if (event.opens) {
            if (hasBefore) add(std::prev(here)->second, event.segment);
            if (hasAfter) add(event.segment, after->second);
        } else {
            if (hasBefore && hasAfter) add(std::prev(here)->second, after->second);
            open.erase(here);
        }
    }
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    return pairs;
}

bool Exchanger::Round() {
    bool changed = false;
    for (const auto& [a, b] : Neighbours())
        if (Exchange(segments_[At(a)], segments_[At(b)])) changed = true;
    return changed;
}

}  // namespace

void Untangle(Sketch& sketch) {
    constexpr int kMostRounds = 6;
    for (int round = 0; round < kMostRounds; ++round) {
        const bool verticals = Exchanger(sketch).Round();
        Transpose(sketch);
        const bool horizontals = Exchanger(sketch).Round();
        Transpose(sketch);
        if (!verticals && !horizontals) return;
    }
}

}  // namespace norvelis::layout
