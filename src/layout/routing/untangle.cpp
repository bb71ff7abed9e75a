#include "layout/routing/untangle.h"

#include <set>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

constexpr double farthest = 1.5;  // inches between neighbours that may change places

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// Exchanges of upright pieces.
class Exchanger {
  public:
    explicit Exchanger(Sketch& sketch);
    bool Round();

  private:
    struct Piece {
        std::size_t line, number;
    };
    /// A level piece that starts at the end of an upright one.
    struct Arm {
        double y, to;
    };
    struct Extent {
        double lo, hi;
        bool Holds(double y) const { return y > lo && y < hi; }
    };
    std::vector<Point>& Way(const Piece& piece) const { return sketch_.ways[piece.line]; }
    double X(const Piece& piece) const { return Way(piece)[piece.number].x; }
    Extent Heights(const Piece& piece) const;
    std::vector<Arm> Arms(const Piece& piece) const;
    bool MayStandAt(const Piece& piece, double x) const;
    bool IsAloneBetween(const Piece& a, const Piece& b) const;
    int Crossings(const Piece& a, double xa, const Piece& b, double xb) const;
    bool Exchange(const Piece& a, const Piece& b);
    std::vector<std::pair<int, int>> Neighbours() const;

    Sketch& sketch_;
    Obstacles boxes_;
    std::vector<Piece> pieces_;
    SpatialIndex near_;
};

Exchanger::Exchanger(Sketch& sketch) : sketch_(sketch), boxes_(sketch.boxes), near_(PageOf(sketch), 1.0) {
    for (std::size_t line = 0; line < sketch.ways.size(); ++line) {
        if (sketch.firstPieces[line] == FirstPiece::Slanting) continue;
        for (std::size_t number = 0; number + 1 < sketch.ways[line].size(); ++number) {
            if (!IsUpright(sketch, line, number)) continue;
            const Piece piece{line, number};
            const Extent heights = Heights(piece);
            near_.Add({X(piece), heights.lo, X(piece), heights.hi}, static_cast<int>(pieces_.size()));
            pieces_.push_back(piece);
        }
    }
}

Exchanger::Extent Exchanger::Heights(const Piece& piece) const {
    const double a = Way(piece)[piece.number].y, b = Way(piece)[piece.number + 1].y;
    return {std::min(a, b), std::max(a, b)};
}

std::vector<Exchanger::Arm> Exchanger::Arms(const Piece& piece) const {
    const auto& way = Way(piece);
    std::vector<Arm> arms;
    if (piece.number > 0) arms.push_back({way[piece.number].y, way[piece.number - 1].x});
    if (piece.number + 2 < way.size()) arms.push_back({way[piece.number + 1].y, way[piece.number + 2].x});
    return arms;
}

bool Exchanger::MayStandAt(const Piece& piece, double x) const {
    const auto& way = Way(piece);
    const auto fits = [&](int box) {
        const Rect& rect = sketch_.boxes[At(box)];
        return std::abs(x - rect.Center().x) <= rect.Width() / 2 * 0.96;
    };
    if (piece.number == 0 && !fits(sketch_.lines[piece.line].from)) return false;
    if (piece.number + 2 == way.size() && !fits(sketch_.lines[piece.line].to)) return false;
    const Extent heights = Heights(piece);
    const Rect swept{std::min(X(piece), x) - 1e-6, heights.lo + 1e-6, std::max(X(piece), x) + 1e-6,
                     heights.hi - 1e-6};
    return swept.y0 >= swept.y1 || !boxes_.Cover(swept);
}

bool Exchanger::IsAloneBetween(const Piece& a, const Piece& b) const {
    const Extent ha = Heights(a), hb = Heights(b);
    const Rect between{X(a), std::min(ha.lo, hb.lo), X(b), std::max(ha.hi, hb.hi)};
    bool alone = true;
    near_.Near(between, [&](int i) {
        const Piece& other = pieces_[At(i)];
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

int Exchanger::Crossings(const Piece& a, double xa, const Piece& b, double xb) const {
    int count = 0;
    const auto add = [&](const Piece& piece, double x, const Piece& other, double otherX) {
        const Extent heights = Heights(other);
        for (const Arm& arm : Arms(piece))
            count += heights.Holds(arm.y) && std::min(x, arm.to) < otherX && otherX < std::max(x, arm.to);
    };
    add(a, xa, b, xb);
    add(b, xb, a, xa);
    return count;
}

bool Exchanger::Exchange(const Piece& a, const Piece& b) {
    const double xa = X(a), xb = X(b);
    if (xa >= xb || a.line == b.line) return false;
    if (Crossings(a, xb, b, xa) >= Crossings(a, xa, b, xb)) return false;
    for (const Arm& one : Arms(a))
        for (const Arm& other : Arms(b))
            if (one.y == other.y) return false;
    if (!MayStandAt(a, xb) || !MayStandAt(b, xa) || !IsAloneBetween(a, b)) return false;
    Way(a)[a.number].x = Way(a)[a.number + 1].x = xb;
    Way(b)[b.number].x = Way(b)[b.number + 1].x = xa;
    for (const Piece* moved : {&a, &b}) {
        const Extent heights = Heights(*moved);
        near_.Add({X(*moved), heights.lo, X(*moved), heights.hi}, static_cast<int>(moved - pieces_.data()));
    }
    return true;
}

/// The pairs of pieces with nothing between them at some height.
std::vector<std::pair<int, int>> Exchanger::Neighbours() const {
    struct Event {
        double y;
        bool opens;
        int piece;
    };
    std::vector<Event> events;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const Extent heights = Heights(pieces_[i]);
        if (heights.lo >= heights.hi) continue;
        events.push_back({heights.lo, true, static_cast<int>(i)});
        events.push_back({heights.hi, false, static_cast<int>(i)});
    }
    std::sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
        return a.y != b.y ? a.y < b.y : a.opens != b.opens ? !a.opens : a.piece < b.piece;
    });
    std::set<std::pair<double, int>> open;
    std::vector<std::pair<int, int>> pairs;
    const auto add = [&](int a, int b) {
        if (X(pieces_[At(b)]) - X(pieces_[At(a)]) < farthest) pairs.emplace_back(a, b);
    };
    for (const Event& event : events) {
        const std::pair key(X(pieces_[At(event.piece)]), event.piece);
        const auto here = event.opens ? open.insert(key).first : open.find(key);
        const auto after = std::next(here);
        const bool hasBefore = here != open.begin(), hasAfter = after != open.end();
        if (event.opens) {
            if (hasBefore) add(std::prev(here)->second, event.piece);
            if (hasAfter) add(event.piece, after->second);
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
        if (Exchange(pieces_[At(a)], pieces_[At(b)])) changed = true;
    return changed;
}

}  // namespace

void Untangle(Sketch& sketch) {
    constexpr int mostRounds = 6;
    for (int round = 0; round < mostRounds; ++round) {
        const bool uprights = Exchanger(sketch).Round();
        Transpose(sketch);
        const bool levels = Exchanger(sketch).Round();
        Transpose(sketch);
        if (!uprights && !levels) return;
    }
}

}  // namespace norvelis::layout
