#include "layout/note_metrics.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "layout/graph/notes.h"
#include "layout/metrics.h"

namespace norvelis::layout {

namespace {

constexpr double kTouch = 1e-6;

struct Note {
    std::size_t box;
    Rect area;
    Point from, to;  ///< Of the leader.
};

/// The shortest way between two rectangles, in the middle of where they face each other.
std::pair<Point, Point> ShortestWay(const Rect& a, const Rect& b) {
    const auto along = [](double a0, double a1, double b0, double b1) {
        const double lo = std::max(a0, b0), hi = std::min(a1, b1);
        if (lo <= hi) return std::pair((lo + hi) / 2, (lo + hi) / 2);
        return a1 < b0 ? std::pair(a1, b0) : std::pair(a0, b1);
    };
    const auto [ax, bx] = along(a.x0, a.x1, b.x0, b.x1);
    const auto [ay, by] = along(a.y0, a.y1, b.y0, b.y1);
    return {{ax, ay}, {bx, by}};
}

double Apart(const Rect& a, const Rect& b) {
    const auto [from, to] = ShortestWay(a, b);
    return Length(to - from);
}

}  // namespace

NoteQuality MeasureNotes(const Graph& graph, const Placement& placement) {
    std::vector<Rect> boxes, labels;
    std::vector<Note> notes;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        Box box = graph.boxes[i];
        boxes.push_back(BoxAt(box, placement.centers[i]));
        if (!box.HasNote()) continue;
        box.noteSide = placement.noteSides[i];
        const Rect area = NoteAt(box, placement.centers[i]);
        const auto [from, to] = ShortestWay(boxes.back(), area);
        notes.push_back({i, area, from, to});
    }
    std::vector<std::vector<Point>> paths;
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        paths.push_back(Drawn(placement.routes[k]));
        if (line.labelWidth > 0)
            labels.push_back(RectAround(placement.routes[k].label, line.labelWidth, line.labelHeight));
    }

    NoteQuality quality;
    quality.notes = static_cast<int>(notes.size());
    for (const Note& note : notes) {
        const Rect inside = note.area.Grown(-kTouch);
        quality.longestLeader = std::max(quality.longestLeader, Length(note.to - note.from));
        const double own = Apart(boxes[note.box], note.area);
        bool isStranger = false, isBarred = false;
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            quality.collisions += Overlap(inside, boxes[i]);
            isStranger = isStranger || (i != note.box && Apart(boxes[i], note.area) <= own);
            isBarred = isBarred || SegmentHits(note.from, note.to, boxes[i].Grown(-kTouch));
        }
        for (const Rect& label : labels) {
            quality.collisions += Overlap(inside, label);
            isBarred = isBarred || SegmentHits(note.from, note.to, label);
        }
        for (const Note& other : notes) {
            if (&other == &note) continue;
            quality.collisions += &other < &note && Overlap(inside, other.area);
            isBarred = isBarred || SegmentHits(note.from, note.to, other.area);
        }
        bool isOverLine = false, isCrossed = false;
        for (const std::vector<Point>& path : paths) {
            for (std::size_t k = 1; k < path.size(); ++k) {
                isOverLine = isOverLine || SegmentHits(path[k - 1], path[k], inside);
                isCrossed = isCrossed || SegmentsCross(path[k - 1], path[k], note.from, note.to);
            }
        }
        quality.strangers += isStranger;
        quality.barredLeaders += isBarred;
        quality.overLines += isOverLine;
        quality.crossedLeaders += isCrossed;
    }
    return quality;
}

}  // namespace norvelis::layout
