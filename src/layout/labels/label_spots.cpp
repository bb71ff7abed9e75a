#include "layout/labels/label_spots.h"
#include "layout/graph/graph.h"

#include <numeric>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

constexpr double rim = 0.1;
constexpr double edge = 0.02;   // of a label beside its line that the line still runs through
constexpr double touch = 1e-6;  // what touches only does not cover

// What it costs, in inches, to make room for a label.
constexpr double overUpright = 0.6;   // it is wide, and lies across its line
constexpr double offCenter = 0.1;     // it lies to one side of it
constexpr double pushLevel = 0.04;    // a level line, or a box, aside
constexpr double pushUpright = 0.35;  // an upright line, or a box, aside
constexpr double pushNeighbour = 2;   // a line that leaves the same side of the same box, and cannot move far

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

class SpotChooser {
  public:
    explicit SpotChooser(Sketch& sketch);
    /// False when all pieces are barred.
    bool Choose(std::size_t line, const std::vector<char>& barredPieces);
    void Keep(std::size_t line);

  private:
    struct Piece {
        Rect area;
        std::size_t line;
        bool upright;
        int boxes[2];  ///< At its ends, -1 where it goes on.
    };
    struct Offer {
        double at, cost;
        double aside = 0;
    };
    struct Stretch {
        double lo, hi, cost;
    };
    Offer OnPiece(const Piece& piece, double side) const;
    void LookAround(const Piece& piece, const Rect& band, std::vector<Stretch>& crossed,
                    std::vector<Stretch>& beside) const;

    Sketch& sketch_;
    SpatialIndex piecesNear_, labelsNear_;
    Obstacles boxes_;
    std::vector<Piece> pieces_;
    std::vector<std::size_t> firstPiece_;  ///< Of each line.
    std::vector<Rect> labels_;
};

SpotChooser::SpotChooser(Sketch& sketch)
    : sketch_(sketch),
      piecesNear_(PageOf(sketch), 1.5),
      labelsNear_(PageOf(sketch), 1.5),
      boxes_(sketch.boxes) {
    for (std::size_t line = 0; line < sketch.ways.size(); ++line) {
        const auto& way = sketch.ways[line];
        firstPiece_.push_back(pieces_.size());
        for (std::size_t piece = 0; piece + 1 < way.size(); ++piece) {
            piecesNear_.AddPiece(way[piece], way[piece + 1], static_cast<int>(pieces_.size()));
            pieces_.push_back({RectOf(way[piece], way[piece + 1]),
                               line,
                               IsUpright(sketch, line, piece),
                               {piece == 0 ? sketch.lines[line].from : -1,
                                piece + 2 == way.size() ? sketch.lines[line].to : -1}});
        }
    }
    firstPiece_.push_back(pieces_.size());
}

/// What crosses the band along the piece, and what runs beside it there.
void SpotChooser::LookAround(const Piece& piece, const Rect& band, std::vector<Stretch>& crossed,
                             std::vector<Stretch>& beside) const {
    const auto stretch = [&](const Rect& area, double cost) {
        return piece.upright ? Stretch{area.y0, area.y1, cost} : Stretch{area.x0, area.x1, cost};
    };
    const auto isAtOneBox = [&](const Piece& other) {
        for (const int a : piece.boxes)
            for (const int b : other.boxes)
                if (a >= 0 && a == b) return true;
        return false;
    };
    const double push = piece.upright ? pushUpright : pushLevel;
    piecesNear_.Near(band, [&](int i) {
        const Piece& other = pieces_[At(i)];
        if (other.line == piece.line || !Overlap(other.area.Grown(1e-9), band)) return true;
        if (other.upright != piece.upright) {
            crossed.push_back(stretch(other.area, 0));
        } else {
            beside.push_back(stretch(other.area, isAtOneBox(other) ? pushNeighbour : push));
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

/// `side`: 0 across the line, -1 and 1 left and right of an upright one, which runs along the label's edge.
SpotChooser::Offer SpotChooser::OnPiece(const Piece& piece, double side) const {
    const Line& sizes = sketch_.lines[piece.line];
    const double need = (piece.upright ? sizes.labelHeight : sizes.labelWidth) + 2 * rim;
    const double half = (piece.upright ? sizes.labelWidth : sizes.labelHeight) / 2;
    const double aside = side * (half - edge);
    const Rect& area = piece.area;
    const Rect band = piece.upright
                          ? Rect{area.x0 + aside - half - rim, area.y0, area.x1 + aside + half + rim, area.y1}
                          : Rect{area.x0, area.y0 - half - rim, area.x1, area.y1 + half + rim};
    const double first = piece.upright ? area.y0 : area.x0, last = piece.upright ? area.y1 : area.x1;
    std::vector<Stretch> crossed, beside;
    LookAround(piece, band, crossed, beside);

    const double middle = (first + last) / 2, length = std::max(last - first, 1e-6);
    Offer best{middle, 1e9, aside};
    const auto offer = [&](double at, double lacking) {
        double cost = lacking * (piece.upright ? 1 : 1.5) + 0.3 * std::abs(at - middle) / length;
        const double reach = (need - lacking) / 2;
        for (const Stretch& other : beside) {
            if (other.lo >= at + reach || cost >= best.cost) break;
            if (other.hi > at - reach) cost += other.cost;
        }
        if (cost < best.cost) best = {at, cost, aside};
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
    // Where neighbours have turned off, room can be made that they would not leave.
    std::vector<Stretch> barred = crossed;
    for (const Stretch& other : beside)
        if (other.cost == pushNeighbour) barred.push_back(other);
    if (barred.size() > crossed.size()) {
        std::sort(barred.begin(), barred.end(),
                  [](const Stretch& a, const Stretch& b) { return a.lo < b.lo; });
        offerBetween(barred);
    }
    if (piece.upright) best.cost += overUpright + (side != 0 ? offCenter : 0);
    return best;
}

bool SpotChooser::Choose(std::size_t line, const std::vector<char>& barredPieces) {
    const Line& sizes = sketch_.lines[line];
    if (sizes.labelWidth <= 0 || sizes.labelHeight <= 0) return false;
    if (sketch_.firstPieces[line] == FirstPiece::Slanting) return false;
    Offer best{0, 1e300};
    for (std::size_t piece = firstPiece_[line]; piece < firstPiece_[line + 1]; ++piece) {
        const std::size_t inLine = piece - firstPiece_[line];
        if (inLine < barredPieces.size() && barredPieces[inLine]) continue;
        for (const double side : {0.0, 1.0, -1.0}) {
            if (side != 0 && (!pieces_[piece].upright || best.cost <= overUpright + offCenter)) continue;
            const Offer offer = OnPiece(pieces_[piece], side);
            if (offer.cost >= best.cost) continue;
            best = offer;
            sketch_.labels[line] = {static_cast<int>(inLine), offer.at, offer.aside};
        }
    }
    return best.cost < 1e300;
}

void SpotChooser::Keep(std::size_t line) {
    if (sketch_.labels[line].piece < 0) return;
    const Rect label = LabelArea(sketch_, line);
    labelsNear_.Add(label, static_cast<int>(labels_.size()));
    labels_.push_back(label);
}

}  // namespace

void ChooseLabelSpots(Sketch& sketch) {
    std::vector<double> lengths;
    for (const auto& way : sketch.ways) lengths.push_back(LengthOf(way));
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
        if (sketch.labels[line].piece < 0) continue;
        const Rect area = areas[line] = LabelArea(sketch, line).Grown(-touch);
        isCovered[line] = boxes.Cover(area);
        labelsNear.Near(area, [&](int other) {
            if (Overlap(area, areas[At(other)])) isCovered[line] = 1;
            return !isCovered[line];
        });
        labelsNear.Add(area, static_cast<int>(line));
    }
    for (std::size_t line = 0; line < sketch.ways.size(); ++line) {
        const auto& way = sketch.ways[line];
        for (std::size_t piece = 0; piece + 1 < way.size(); ++piece) {
            labelsNear.Near(RectOf(way[piece], way[piece + 1]), [&](int other) {
                if (At(other) != line && !isCovered[At(other)] &&
                    PieceHits(way[piece], way[piece + 1], areas[At(other)]))
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
        tried[line].resize(sketch.ways[line].size());
        tried[line][At(sketch.labels[line].piece)] = 1;
        moved = chooser.Choose(line, tried[line]) || moved;
        chooser.Keep(line);
    }
    return moved;
}

}  // namespace norvelis::layout
