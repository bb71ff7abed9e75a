#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "drawing/arrange/note_rooms.h"
#include "drawing/arrange/page_arrangement.h"
#include "drawing/session/connectors.h"
#include "layout/geometry/spatial_index.h"
#include "layout/graph/graph.h"

namespace norvelis::drawing {

namespace {

constexpr double kStep = 0.1;        // Inches between the places that are tried.
constexpr double kClearance = 0.06;  // Kept free around a note.
constexpr double kFarthest = 12;     // From where the note was dropped.

// How much farther a note goes to be without a blemish, in inches.
constexpr double kForLines = 2;         // covers a line
constexpr double kForText = 2;          // its leader runs over a box, a label or a note
constexpr double kForCrossings = 0.75;  // its leader crosses a line

/// What notes may not cover, and the lines that they should not.
class Ground {
  public:
    Ground(OpenDocument& document, Page& page)
        : blocks_(Area(document, page), kSquare), lines_(Area(document, page), kSquare) {
        for (const auto& shape : page.shapes) {
            switch (RoleOf(page, *shape)) {
                case Role::Line:
                    AddPath(RouteOf(document, page, *shape));
                    if (!TextOf(*shape).empty()) Take(LabelOf(document, page, *shape));
                    break;
                case Role::Box:
                case Role::Other:
                    Take(BlockOf(document, page, *shape));
                    break;
                case Role::Note:
                case Role::Decoration:
                    break;
            }
        }
    }

    void Take(const Rect& rect) {
        blocks_.Add(rect, static_cast<int>(taken_.size()));
        taken_.push_back(rect);
    }
    bool IsFree(const Rect& rect) const {
        bool free = true;
        blocks_.Near(rect,
                     [&](int id) { return free = !Overlap(taken_[static_cast<std::size_t>(id)], rect); });
        return free;
    }
    /// Whether a leader runs over something other than the box that it explains.
    bool IsFree(Point a, Point b, const Rect& own) const {
        bool free = true;
        blocks_.Near(RectOf(a, b), [&](int id) {
            const Rect& taken = taken_[static_cast<std::size_t>(id)];
            free = Overlap(taken, own) || !SegmentHits(a, b, taken);
            return free;
        });
        return free;
    }
    bool CoversLine(const Rect& rect) const {
        bool covers = false;
        lines_.Near(rect, [&](int id) {
            const auto& [a, b] = segments_[static_cast<std::size_t>(id)];
            covers = SegmentHits(a, b, rect);
            return !covers;
        });
        return covers;
    }

    bool CrossesLine(Point a, Point b) const {
        bool crosses = false;
        lines_.Near(RectOf(a, b), [&](int id) {
            const auto& [from, to] = segments_[static_cast<std::size_t>(id)];
            crosses = SegmentsCross(a, b, from, to);
            return !crosses;
        });
        return crosses;
    }

  private:
    static constexpr double kSquare = 0.5;

    static Rect Area(OpenDocument& document, Page& page) {
        const auto size = [&](Name name) { return document.recalculation.Number(page, page.sheet, name); };
        return {0, 0, size(Name::PageWidth), size(Name::PageHeight)};
    }
    void AddPath(const std::vector<Point>& points) {
        for (std::size_t i = 1; i < points.size(); ++i) {
            lines_.AddSegment(points[i - 1], points[i], static_cast<int>(segments_.size()));
            segments_.emplace_back(points[i - 1], points[i]);
        }
    }

    layout::SpatialIndex blocks_, lines_;
    std::vector<Rect> taken_;
    std::vector<std::pair<Point, Point>> segments_;
};

/// Shifts to try, the shortest first; of equal ones that up and to the right, away from the box.
std::vector<Point> Shifts() {
    std::vector<Point> shifts;
    const int reach = static_cast<int>(kFarthest / kStep);
    for (int y = -reach; y <= reach; ++y) {
        for (int x = -reach; x <= reach; ++x) {
            if (x * x + y * y <= reach * reach) shifts.push_back({x * kStep, y * kStep});
        }
    }
    std::stable_sort(shifts.begin(), shifts.end(), [](Point a, Point b) {
        const double lengthA = a.x * a.x + a.y * a.y, lengthB = b.x * b.x + b.y * b.y;
        if (std::fabs(lengthA - lengthB) > 1e-9) return lengthA < lengthB;
        return a.x + a.y > b.x + b.y;
    });
    return shifts;
}

Rect Shifted(const Rect& rect, Point by) {
    return {rect.x0 + by.x, rect.y0 + by.y, rect.x1 + by.x, rect.y1 + by.y};
}

/// What a free place costs above its distance.
double CostOf(const Ground& ground, const Rect& note, const Rect& box) {
    const auto [begin, end] = LeaderOf(box, note);
    double cost = 0;
    if (ground.CoversLine(note.Grown(kClearance))) cost += kForLines;
    if (!ground.IsFree(begin, end, box)) cost += kForText;
    if (ground.CrossesLine(begin, end)) cost += kForCrossings;
    return cost;
}

/// The shift to the place that the note takes; nothing when all around is taken. `box` is what it explains.
std::optional<Point> FindShift(const Ground& ground, const Rect& note, const Rect& box,
                               const std::vector<Point>& shifts) {
    std::optional<Point> best;
    double least = std::numeric_limits<double>::infinity();
    for (const Point& shift : shifts) {
        if (Length(shift) >= least) break;
        const Rect place = Shifted(note, shift);
        if (!ground.IsFree(place.Grown(kClearance))) continue;
        const double cost = Length(shift) + CostOf(ground, place, box);
        if (cost >= least) continue;
        least = cost;
        best = shift;
    }
    return best;
}

/// The block of the shape that a note explains; a point at the note's corner when it is tied to nothing.
Rect ExplainedBy(OpenDocument& document, Page& page, Shape& note, const Rect& rect) {
    Shape* box = GluedTo(page, note, true);
    return box ? BlockOf(document, page, *box) : Rect{rect.x0, rect.y0, rect.x0, rect.y0};
}

/// Moves all notes of a box into its room, when they fit.
bool FillRoom(OpenDocument& document, Page& page, Shape& box, const std::vector<Shape*>& notes,
              Ground& ground) {
    const auto room = document.noteRooms.find({page.id, box.id});
    if (room == document.noteRooms.end()) return false;
    const Rect block = BlockOf(document, page, box);
    const std::vector<Rect> places =
        PlacesInRoom(block, SizesOfNotes(document, page, notes), room->second.side);
    const auto isFree = [&](const Rect& place) { return ground.IsFree(place) && !ground.CoversLine(place); };
    if (!std::all_of(places.begin(), places.end(), isFree)) return false;
    for (std::size_t i = 0; i < notes.size(); ++i) {
        PutNote(document, page, *notes[i], places[i], block);
        ground.Take(places[i]);
    }
    return true;
}

}  // namespace

void FindSpaceForNotes(OpenDocument& document, Page& page) {
    document.recalculation.Settle();
    std::vector<Shape*> boxes, searching;
    for (const auto& shape : page.shapes) {
        const Role role = RoleOf(page, *shape);
        if (role == Role::Box) boxes.push_back(shape.get());
        if (role == Role::Note) searching.push_back(shape.get());
    }
    if (searching.empty()) return;
    Ground ground(document, page);
    const std::vector<std::vector<Shape*>> notes = NotesOf(page, boxes);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (notes[i].empty() || !FillRoom(document, page, *boxes[i], notes[i], ground)) continue;
        for (const Shape* placed : notes[i]) std::erase(searching, placed);
    }
    const std::vector<Point> shifts = searching.empty() ? std::vector<Point>() : Shifts();
    for (Shape* note : searching) {
        const Rect rect = NoteOf(document, page, *note);
        const Rect box = ExplainedBy(document, page, *note, rect);
        const Rect place = Shifted(rect, FindShift(ground, rect, box, shifts).value_or(Point{0, 0}));
        ground.Take(place);
        PutNote(document, page, *note, place, box);
    }
    document.recalculation.Settle();
    GrowPageToContents(document, page);
}

}  // namespace norvelis::drawing
