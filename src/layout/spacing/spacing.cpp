#include "layout/spacing/spacing.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "layout/spacing/constraint_graph.h"

namespace norvelis::layout {

namespace {

constexpr double kLabelMargin = 0.03;
constexpr double kHair = 1e-7;
constexpr double kCorner = 0.08;  // of a side that stays free of lines, where it is not short
constexpr double kTouch = 0.006;  // lines whose corners are so near keep their order

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// Something with an extent across the axis that others must not pass.
struct Thing {
    double place, half;  ///< Along the axis; half of its size with its margin.
    double lo, hi;       ///< Across.
    int variable;
    double off = 0;               ///< Of its middle from its place.
    int before = -1, after = -1;  ///< Variables of the same line's segments across a jog: they may meet.
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
    /// `margins`: what comes nearer than its distance counts as facing, too, not only what overlaps.
    Pass(Sketch& sketch, double boxGapAlong, double boxGapAcross, double lineGap, bool margins,
         bool labelsMayPassBoxes)
        : sketch_(sketch),
          boxGapAlong_(boxGapAlong),
          boxGapAcross_(boxGapAcross),
          lineMargin_(lineGap / 2),
          boxMargin_(lineGap),
          margins_(margins),
          labelsMayPassBoxes_(labelsMayPassBoxes) {}

    void Run(double squeeze) {
        NameVariables();
        ConstraintGraph graph(places_);
        Face(Boxes(), graph);
        Face(All(true, labelsMayPassBoxes_), graph);
        Face(All(false, false), graph);
        HoldPorts(graph);
        std::vector<double> places = graph.Solve(squeeze);
        if (margins_) StraightenJogs(graph, places);
        Move(places);
    }

  private:
    void NameVariables();
    /// Those that are no notes.
    std::size_t BoxCount() const { return sketch_.boxes.size() - sketch_.boxesWithNote.size(); }
    /// What moves a box or note: the box itself, or that of the note.
    int VariableOf(std::size_t box) const {
        return box < BoxCount() ? static_cast<int>(box) : sketch_.boxesWithNote[box - BoxCount()];
    }
    Thing ThingOf(std::size_t box, double along, double across) const;
    std::vector<Thing> Boxes() const;
    std::vector<Thing> All(bool withBoxes, bool thinLabels) const;
    void AddSegment(std::vector<Thing>& things, std::size_t line, std::size_t segment, bool withBoxes) const;
    void HoldPorts(ConstraintGraph& graph) const;
    bool IsJog(std::size_t line, std::size_t horizontalSegment) const;
    void StraightenJogs(ConstraintGraph& graph, std::vector<double>& places) const;
    void Move(const std::vector<double>& places);

    int NewVariable(double place) {
        places_.push_back(place);
        return static_cast<int>(places_.size()) - 1;
    }
    double Margin(double margin) const { return margins_ ? margin - kHair : -kHair; }
    bool HasLabel(std::size_t line) const { return sketch_.labels[line].segment >= 0; }

    Sketch& sketch_;
    double boxGapAlong_, boxGapAcross_, lineMargin_, boxMargin_;
    bool margins_, labelsMayPassBoxes_;
    std::vector<double> places_;
    std::vector<std::vector<int>> segmentVariable_;  ///< -1 for horizontal segments.
    std::vector<int> labelVariable_;                 ///< -1 for labels that are on vertical segments.
};

void Pass::NameVariables() {
    for (std::size_t i = 0; i < BoxCount(); ++i) NewVariable(sketch_.boxes[i].Center().x);
    std::map<std::pair<int, double>, int> trunks;
    segmentVariable_.resize(sketch_.paths.size());
    labelVariable_.assign(sketch_.paths.size(), -1);
    for (std::size_t line = 0; line < sketch_.paths.size(); ++line) {
        const auto& path = sketch_.paths[line];
        for (std::size_t segment = 0; segment + 1 < path.size(); ++segment) {
            int variable = -1;
            if (sketch_.firstSegments[line] != FirstSegment::Slanting && IsVertical(sketch_, line, segment)) {
                const double x = path[segment].x;
                if (sketch_.trunks) {
                    const auto key = std::pair(sketch_.lines[line].from, x);
                    const auto found = trunks.find(key);
                    variable = found != trunks.end() ? found->second : NewVariable(x);
                    trunks.emplace(key, variable);
                } else {
                    variable = NewVariable(x);
                }
            }
            segmentVariable_[line].push_back(variable);
        }
        if (HasLabel(line) && segmentVariable_[line][At(sketch_.labels[line].segment)] < 0)
            labelVariable_[line] = NewVariable(sketch_.labels[line].at);
    }
}

/// With what is kept free on either side of it.
Thing Pass::ThingOf(std::size_t box, double along, double across) const {
    const Rect& area = sketch_.boxes[box];
    const int variable = VariableOf(box);
    const double middle = area.Center().x;
    return {middle,   area.Width() / 2 + along,      area.y0 - across, area.y1 + across,
            variable, middle - places_[At(variable)]};
}

std::vector<Thing> Pass::Boxes() const {
    constexpr double kAroundNote = 0.5;  // of what is around a box
    std::vector<Thing> things;
    for (std::size_t i = 0; i < sketch_.boxes.size(); ++i) {
        const double share = i < BoxCount() ? 1 : kAroundNote;
        things.push_back(ThingOf(i, share * boxGapAlong_ / 2, share * (boxGapAcross_ / 2 - kHair)));
    }
    return things;
}

std::vector<Thing> Pass::All(bool withBoxes, bool thinLabels) const {
    std::vector<Thing> things;
    for (std::size_t i = 0; withBoxes && i < sketch_.boxes.size(); ++i) {
        things.push_back(ThingOf(i, boxMargin_, Margin(boxMargin_)));
    }
    for (std::size_t line = 0; line < sketch_.paths.size(); ++line) {
        for (std::size_t segment = 0; segment + 1 < sketch_.paths[line].size(); ++segment)
            if (segmentVariable_[line][segment] >= 0) AddSegment(things, line, segment, withBoxes);
        if (labelVariable_[line] < 0) continue;
        const Point middle = LabelMiddle(sketch_, line);
        const double half = thinLabels ? 0 : sketch_.lines[line].labelHeight / 2;
        things.push_back({middle.x, sketch_.lines[line].labelWidth / 2 + kLabelMargin,
                          middle.y - half - (thinLabels ? 3 * kHair : Margin(kLabelMargin)),
                          middle.y + half + (thinLabels ? 3 * kHair : Margin(kLabelMargin)),
                          labelVariable_[line]});
    }
    return things;
}

/// A vertical segment, cut where its label is.
void Pass::AddSegment(std::vector<Thing>& things, std::size_t line, std::size_t segment,
                      bool withBoxes) const {
    const auto& path = sketch_.paths[line];
    const int variable = segmentVariable_[line][segment];
    Point a = path[segment], b = path[segment + 1];
    const bool firstIsLow = a.y < b.y;
    const bool startsAtBox = segment == 0, endsAtBox = segment + 2 == path.size();
    const bool lowAtBox = firstIsLow ? startsAtBox : endsAtBox,
               highAtBox = firstIsLow ? endsAtBox : startsAtBox;
    const double middle = (a.y + b.y) / 2;
    // Next to its own box a line keeps no distance from the box, but from other lines.
    const auto margin = [&](bool atBox) {
        if (!atBox && !withBoxes && !margins_) return kTouch;
        return !atBox ? Margin(lineMargin_) : withBoxes ? -Margin(boxMargin_) - kHair : -kHair;
    };
    double lo = std::min(a.y, b.y) - margin(lowAtBox), hi = std::max(a.y, b.y) + margin(highAtBox);
    lo = std::min(lo, middle - kHair);
    hi = std::max(hi, middle + kHair);
    const int before = segment > 0 && IsJog(line, segment - 1) ? segmentVariable_[line][segment - 2] : -1;
    const int after = !endsAtBox && IsJog(line, segment + 1) ? segmentVariable_[line][segment + 2] : -1;
    const auto add = [&](double half, double from, double to, double off) {
        things.push_back({a.x, half, from, to, variable, off, before, after});
    };
    if (!HasLabel(line) || sketch_.labels[line].segment != static_cast<int>(segment)) {
        add(lineMargin_, lo, hi, 0);
        return;
    }
    const LabelSpot& spot = sketch_.labels[line];
    const double half = sketch_.lines[line].labelHeight / 2 + Margin(kLabelMargin);
    add(lineMargin_, lo, spot.at - half, 0);
    add(sketch_.lines[line].labelWidth / 2 + kLabelMargin, spot.at - half, spot.at + half, spot.offset);
    add(lineMargin_, spot.at + half, hi, 0);
}

void Pass::HoldPorts(ConstraintGraph& graph) const {
    for (std::size_t line = 0; line < sketch_.paths.size(); ++line) {
        const auto& segments = segmentVariable_[line];
        const auto hold = [&](int variable, int box) {
            const double half = sketch_.boxes[At(box)].Width() / 2;
            if (variable < 0) return;
            // A crowded side is used as far as it is now, lest the lines there find no solution.
            const double now = std::abs(places_[At(variable)] - places_[At(box)]);
            const double reach = std::max(std::max(half - kCorner, half * 0.9), std::min(now, half * 0.96));
            graph.KeepWithin(box, variable, reach);
        };
        hold(segments.front(), sketch_.lines[line].from);
        hold(segments.back(), sketch_.lines[line].to);
    }
}

/// Whether the line goes on in the same direction after a horizontal segment.
bool Pass::IsJog(std::size_t line, std::size_t horizontalSegment) const {
    const auto& path = sketch_.paths[line];
    if (horizontalSegment == 0 || horizontalSegment + 2 >= path.size()) return false;
    return (path[horizontalSegment].y - path[horizontalSegment - 1].y) *
               (path[horizontalSegment + 2].y - path[horizontalSegment + 1].y) >
           0;
}

void Pass::StraightenJogs(ConstraintGraph& graph, std::vector<double>& places) const {
    for (std::size_t line = 0; line < sketch_.paths.size(); ++line) {
        if (sketch_.firstSegments[line] == FirstSegment::Slanting) continue;
        const auto& segments = segmentVariable_[line];
        for (std::size_t segment = 1; segment + 1 < segments.size(); ++segment) {
            if (segments[segment] >= 0 || !IsJog(line, segment)) continue;
            if (sketch_.labels[line].segment == static_cast<int>(segment)) continue;
            const int before = segments[segment - 1], after = segments[segment + 1];
            if (before >= 0 && after >= 0) graph.Join(before, after, places);
        }
    }
}

void Pass::Move(const std::vector<double>& places) {
    std::vector<double> shift;
    for (std::size_t i = 0; i < sketch_.boxes.size(); ++i) {
        const std::size_t variable = At(VariableOf(i));
        shift.push_back(places[variable] - places_[variable]);
        sketch_.boxes[i].x0 += shift[i];
        sketch_.boxes[i].x1 += shift[i];
    }
    for (std::size_t line = 0; line < sketch_.paths.size(); ++line) {
        auto& path = sketch_.paths[line];
        const auto& segments = segmentVariable_[line];
        if (segments.front() < 0) path.front().x += shift[At(sketch_.lines[line].from)];
        if (segments.back() < 0) path.back().x += shift[At(sketch_.lines[line].to)];
        for (std::size_t segment = 0; segment < segments.size(); ++segment)
            if (segments[segment] >= 0) path[segment].x = path[segment + 1].x = places[At(segments[segment])];
        if (labelVariable_[line] >= 0) sketch_.labels[line].at = places[At(labelVariable_[line])];
    }
}

}  // namespace

void SpreadBoxes(std::vector<Rect>& boxes, double gapX, double gapY, double squeeze,
                 const std::vector<int>& boxesWithNote) {
    Sketch sketch;
    sketch.boxes = boxes;
    sketch.boxesWithNote = boxesWithNote;
    Transpose(sketch);
    Pass(sketch, gapY, gapX, 0, false, false).Run(squeeze);
    Transpose(sketch);
    Pass(sketch, gapX, gapY, 0, false, false).Run(squeeze);
    boxes = std::move(sketch.boxes);
}

void MakeSpace(Sketch& sketch, double boxGapX, double boxGapY, double lineGap, double squeeze) {
    for (const bool margins : {false, true}) {
        Transpose(sketch);
        Pass(sketch, boxGapY, boxGapX, lineGap, margins, !margins).Run(squeeze);
        Transpose(sketch);
        Pass(sketch, boxGapX, boxGapY, lineGap, margins, false).Run(squeeze);
    }
}

}  // namespace norvelis::layout
