#include "layout/spacing/spacing.h"

#include <map>
#include <set>
#include <utility>

#include "layout/spacing/constraint_graph.h"

namespace norvelis::layout {

namespace {

constexpr double labelRim = 0.03;
constexpr double hair = 1e-7;

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// Something with an extent across the axis that others must not pass.
struct Thing {
    double place, half;  ///< Along the axis; half of its size with its rim.
    double lo, hi;       ///< Across.
    int variable;
    double off = 0;               ///< Of its middle from its place.
    int before = -1, after = -1;  ///< Variables of the same line's pieces across a jog: they may meet.
};

/// Adds an arc for each two things that face each other: Dwyer, Marriott, Stuckey: Fast node overlap removal
/// (2005).
void Face(const std::vector<Thing>& things, ConstraintGraph& graph) {
    struct Event {
        double at;
        bool opens;
        int thing;
    };
    std::vector<Event> events;
    for (std::size_t i = 0; i < things.size(); ++i) {
        if (things[i].hi <= things[i].lo) continue;
        events.push_back({things[i].lo, true, static_cast<int>(i)});
        events.push_back({things[i].hi, false, static_cast<int>(i)});
    }
    std::sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
        return a.at != b.at ? a.at < b.at : a.opens != b.opens ? !a.opens : a.thing < b.thing;
    });
    const auto isBefore = [&](int a, int b) {
        const Thing &x = things[At(a)], &y = things[At(b)];
        return x.place != y.place         ? x.place < y.place
               : x.variable != y.variable ? x.variable < y.variable
                                          : a < b;
    };
    const auto join = [&](int lower, int upper) {
        const Thing &a = things[At(lower)], &b = things[At(upper)];
        if (a.variable != b.variable)
            graph.KeepApart(a.variable, b.variable, a.half + b.half + a.off - b.off);
    };
    std::set<int, decltype(isBefore)> open(isBefore);
    for (const Event& event : events) {
        if (event.opens) {
            const auto here = open.insert(event.thing).first;
            if (here != open.begin()) join(*std::prev(here), event.thing);
            if (std::next(here) != open.end()) join(event.thing, *std::next(here));
        } else {
            const auto here = open.find(event.thing);
            if (here != open.begin() && std::next(here) != open.end())
                join(*std::prev(here), *std::next(here));
            open.erase(here);
        }
    }
}

/// One pass along the x axis.
class Pass {
  public:
    /// `rims`: what comes nearer than its distance counts as facing, too, not only what overlaps.
    Pass(Sketch& sketch, double boxGapAlong, double boxGapAcross, double lineGap, bool rims,
         bool labelsMayPassBoxes)
        : sketch_(sketch),
          boxGapAlong_(boxGapAlong),
          boxGapAcross_(boxGapAcross),
          lineRim_(lineGap / 2),
          boxRim_(lineGap),
          rims_(rims),
          labelsMayPassBoxes_(labelsMayPassBoxes) {}

    void Run(double squeeze) {
        NameVariables();
        ConstraintGraph graph(places_);
        Face(Boxes(), graph);
        Face(All(true, labelsMayPassBoxes_), graph);
        Face(All(false, false), graph);
        HoldPorts(graph);
        std::vector<double> places = graph.Solve(squeeze);
        if (rims_) StraightenJogs(graph, places);
        Move(places);
    }

  private:
    void NameVariables();
    std::vector<Thing> Boxes() const;
    std::vector<Thing> All(bool withBoxes, bool thinLabels) const;
    void AddPiece(std::vector<Thing>& things, std::size_t line, std::size_t piece, bool withBoxes) const;
    void HoldPorts(ConstraintGraph& graph) const;
    bool IsJog(std::size_t line, std::size_t levelPiece) const;
    void StraightenJogs(ConstraintGraph& graph, std::vector<double>& places) const;
    void Move(const std::vector<double>& places);

    int NewVariable(double place) {
        places_.push_back(place);
        return static_cast<int>(places_.size()) - 1;
    }
    double Rim(double rim) const { return rims_ ? rim - hair : -hair; }
    bool HasLabel(std::size_t line) const { return sketch_.labels[line].piece >= 0; }

    Sketch& sketch_;
    double boxGapAlong_, boxGapAcross_, lineRim_, boxRim_;
    bool rims_, labelsMayPassBoxes_;
    std::vector<double> places_;
    std::vector<std::vector<int>> pieceVariable_;  ///< -1 for level pieces.
    std::vector<int> labelVariable_;               ///< -1 for labels that stand on upright pieces.
};

void Pass::NameVariables() {
    for (const Rect& box : sketch_.boxes) NewVariable(box.Center().x);
    std::map<std::pair<int, double>, int> trunks;
    pieceVariable_.resize(sketch_.ways.size());
    labelVariable_.assign(sketch_.ways.size(), -1);
    for (std::size_t line = 0; line < sketch_.ways.size(); ++line) {
        const auto& way = sketch_.ways[line];
        for (std::size_t piece = 0; piece + 1 < way.size(); ++piece) {
            int variable = -1;
            if (sketch_.firstPieces[line] != FirstPiece::Slanting && IsUpright(sketch_, line, piece)) {
                const double x = way[piece].x;
                if (sketch_.trunks) {
                    const auto key = std::pair(sketch_.lines[line].from, x);
                    const auto found = trunks.find(key);
                    variable = found != trunks.end() ? found->second : NewVariable(x);
                    trunks.emplace(key, variable);
                } else {
                    variable = NewVariable(x);
                }
            }
            pieceVariable_[line].push_back(variable);
        }
        if (HasLabel(line) && pieceVariable_[line][At(sketch_.labels[line].piece)] < 0)
            labelVariable_[line] = NewVariable(sketch_.labels[line].at);
    }
}

std::vector<Thing> Pass::Boxes() const {
    std::vector<Thing> things;
    for (std::size_t i = 0; i < sketch_.boxes.size(); ++i) {
        const Rect& box = sketch_.boxes[i];
        const double rim = boxGapAcross_ / 2 - hair;
        things.push_back({box.Center().x, (box.Width() + boxGapAlong_) / 2, box.y0 - rim, box.y1 + rim,
                          static_cast<int>(i)});
    }
    return things;
}

std::vector<Thing> Pass::All(bool withBoxes, bool thinLabels) const {
    std::vector<Thing> things;
    for (std::size_t i = 0; withBoxes && i < sketch_.boxes.size(); ++i) {
        const Rect& box = sketch_.boxes[i];
        things.push_back({box.Center().x, box.Width() / 2 + boxRim_, box.y0 - Rim(boxRim_),
                          box.y1 + Rim(boxRim_), static_cast<int>(i)});
    }
    for (std::size_t line = 0; line < sketch_.ways.size(); ++line) {
        for (std::size_t piece = 0; piece + 1 < sketch_.ways[line].size(); ++piece)
            if (pieceVariable_[line][piece] >= 0) AddPiece(things, line, piece, withBoxes);
        if (labelVariable_[line] < 0) continue;
        const Point middle = LabelMiddle(sketch_, line);
        const double half = thinLabels ? 0 : sketch_.lines[line].labelHeight / 2;
        things.push_back({middle.x, sketch_.lines[line].labelWidth / 2 + labelRim,
                          middle.y - half - (thinLabels ? 3 * hair : Rim(labelRim)),
                          middle.y + half + (thinLabels ? 3 * hair : Rim(labelRim)), labelVariable_[line]});
    }
    return things;
}

/// An upright piece, cut where its label stands.
void Pass::AddPiece(std::vector<Thing>& things, std::size_t line, std::size_t piece, bool withBoxes) const {
    const auto& way = sketch_.ways[line];
    const int variable = pieceVariable_[line][piece];
    Point a = way[piece], b = way[piece + 1];
    const bool firstIsLow = a.y < b.y;
    const bool startsAtBox = piece == 0, endsAtBox = piece + 2 == way.size();
    const bool lowAtBox = firstIsLow ? startsAtBox : endsAtBox,
               highAtBox = firstIsLow ? endsAtBox : startsAtBox;
    const double middle = (a.y + b.y) / 2;
    // Next to its own box a line keeps no distance from the box, but from other lines.
    const auto rim = [&](bool atBox) {
        return !atBox ? Rim(lineRim_) : withBoxes ? -Rim(boxRim_) - hair : -hair;
    };
    double lo = std::min(a.y, b.y) - rim(lowAtBox), hi = std::max(a.y, b.y) + rim(highAtBox);
    lo = std::min(lo, middle - hair);
    hi = std::max(hi, middle + hair);
    const int before = piece > 0 && IsJog(line, piece - 1) ? pieceVariable_[line][piece - 2] : -1;
    const int after = !endsAtBox && IsJog(line, piece + 1) ? pieceVariable_[line][piece + 2] : -1;
    const auto add = [&](double half, double from, double to, double off) {
        things.push_back({a.x, half, from, to, variable, off, before, after});
    };
    if (!HasLabel(line) || sketch_.labels[line].piece != static_cast<int>(piece)) {
        add(lineRim_, lo, hi, 0);
        return;
    }
    const LabelSpot& spot = sketch_.labels[line];
    const double half = sketch_.lines[line].labelHeight / 2 + Rim(labelRim);
    add(lineRim_, lo, spot.at - half, 0);
    add(sketch_.lines[line].labelWidth / 2 + labelRim, spot.at - half, spot.at + half, spot.aside);
    add(lineRim_, spot.at + half, hi, 0);
}

void Pass::HoldPorts(ConstraintGraph& graph) const {
    for (std::size_t line = 0; line < sketch_.ways.size(); ++line) {
        const auto& pieces = pieceVariable_[line];
        const auto hold = [&](int variable, int box) {
            const double half = sketch_.boxes[At(box)].Width() / 2;
            if (variable >= 0) graph.KeepWithin(box, variable, half * 0.96);
        };
        hold(pieces.front(), sketch_.lines[line].from);
        hold(pieces.back(), sketch_.lines[line].to);
    }
}

/// Whether the line goes on in the same direction after a level piece.
bool Pass::IsJog(std::size_t line, std::size_t levelPiece) const {
    const auto& way = sketch_.ways[line];
    if (levelPiece == 0 || levelPiece + 2 >= way.size()) return false;
    return (way[levelPiece].y - way[levelPiece - 1].y) * (way[levelPiece + 2].y - way[levelPiece + 1].y) > 0;
}

void Pass::StraightenJogs(ConstraintGraph& graph, std::vector<double>& places) const {
    for (std::size_t line = 0; line < sketch_.ways.size(); ++line) {
        const auto& pieces = pieceVariable_[line];
        for (std::size_t piece = 1; piece + 1 < pieces.size(); ++piece) {
            if (pieces[piece] >= 0 || !IsJog(line, piece)) continue;
            if (sketch_.labels[line].piece == static_cast<int>(piece)) continue;
            graph.Join(pieces[piece - 1], pieces[piece + 1], places);
        }
    }
}

void Pass::Move(const std::vector<double>& places) {
    std::vector<double> shift;
    for (std::size_t i = 0; i < sketch_.boxes.size(); ++i) {
        shift.push_back(places[i] - places_[i]);
        sketch_.boxes[i].x0 += shift[i];
        sketch_.boxes[i].x1 += shift[i];
    }
    for (std::size_t line = 0; line < sketch_.ways.size(); ++line) {
        auto& way = sketch_.ways[line];
        const auto& pieces = pieceVariable_[line];
        if (pieces.front() < 0) way.front().x += shift[At(sketch_.lines[line].from)];
        if (pieces.back() < 0) way.back().x += shift[At(sketch_.lines[line].to)];
        for (std::size_t piece = 0; piece < pieces.size(); ++piece)
            if (pieces[piece] >= 0) way[piece].x = way[piece + 1].x = places[At(pieces[piece])];
        if (labelVariable_[line] >= 0) sketch_.labels[line].at = places[At(labelVariable_[line])];
    }
}

}  // namespace

void SpreadBoxes(std::vector<Rect>& boxes, double gapX, double gapY) {
    Sketch sketch;
    sketch.boxes = boxes;
    Transpose(sketch);
    Pass(sketch, gapY, gapX, 0, false, false).Run(1);
    Transpose(sketch);
    Pass(sketch, gapX, gapY, 0, false, false).Run(1);
    boxes = std::move(sketch.boxes);
}

void MakeRoom(Sketch& sketch, double boxGapX, double boxGapY, double lineGap, double squeeze) {
    for (const bool rims : {false, true}) {
        Transpose(sketch);
        Pass(sketch, boxGapY, boxGapX, lineGap, rims, !rims).Run(squeeze);
        Transpose(sketch);
        Pass(sketch, boxGapX, boxGapY, lineGap, rims, false).Run(squeeze);
    }
}

}  // namespace norvelis::layout
