#include "drawing/arrange/page_arrangement.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <unordered_map>

#include "base/text.h"
#include "drawing/arrange/line_jumps.h"
#include "drawing/arrange/note_rooms.h"
#include "drawing/session/connectors.h"
#include "drawing/text/text_layout.h"
#include "layout/former/match.h"
#include "layout/graph/graph.h"
#include "layout/graph/style.h"
#include "layout/place_and_route.h"

namespace norvelis::drawing {

namespace {

// Published numbers of ObjType: what the layout makes of a shape.
constexpr int kUndecided = 0, kPlaceable = 1, kRoutable = 2;

constexpr double kMargin = 0.5;       // Inches around the contents.
constexpr double kTitleInset = 0.25;  // Above the title, and between it and the contents.
// Labels get their fonts and bold type after the layout; this much of their size is kept free for it.
constexpr double kLabelSlack = 1.15;

double Number(OpenDocument& document, Page& page, Shape& shape, const CellRef& ref) {
    return document.recalculation.Number(page, shape, ref);
}

bool IsAnnotation(const Shape& shape) {
    return shape.master && EqualIgnoringCase(shape.master->nameU, "Annotation");
}

bool HasLine(const Page& page, const Shape& shape) {
    return std::any_of(page.connects.begin(), page.connects.end(),
                       [&](const Connect& connect) { return connect.toSheet == shape.id; });
}

class Extent {
  public:
    void Add(const Rect& rect) {
        bounds_.x0 = std::min(bounds_.x0, rect.x0);
        bounds_.y0 = std::min(bounds_.y0, rect.y0);
        bounds_.x1 = std::max(bounds_.x1, rect.x1);
        bounds_.y1 = std::max(bounds_.y1, rect.y1);
    }
    void Add(Point point) { Add(Rect{point.x, point.y, point.x, point.y}); }
    std::optional<Rect> Bounds() const {
        return bounds_.x0 <= bounds_.x1 ? std::optional(bounds_) : std::nullopt;
    }

  private:
    static constexpr double kInfinite = std::numeric_limits<double>::infinity();
    Rect bounds_{kInfinite, kInfinite, -kInfinite, -kInfinite};
};

/// Bounds of all that the page is about.
std::optional<Rect> ContentsOf(OpenDocument& document, Page& page) {
    Extent extent;
    for (const auto& shape : page.shapes) {
        switch (RoleOf(page, *shape)) {
            case Role::Decoration:
                break;
            case Role::Line:
                for (const Point& point : RouteOf(document, page, *shape)) extent.Add(point);
                if (!TextOf(*shape).empty()) extent.Add(LabelOf(document, page, *shape));
                break;
            case Role::Note:
                extent.Add(NoteOf(document, page, *shape));
                break;
            case Role::Box:
            case Role::Other:
                extent.Add(BlockOf(document, page, *shape));
                break;
        }
    }
    return extent.Bounds();
}

/// How far the decorations with a size of their own, such as a title, reach from its upper left corner: those
/// that ride at the top of the page together, others each by itself.
layout::Box TitleOf(OpenDocument& document, Page& page) {
    const double top = Number(document, page, page.sheet, Name::PageHeight) - kTitleInset;
    layout::Box size;
    for (const auto& shape : page.shapes) {
        if (RoleOf(page, *shape) != Role::Decoration) continue;
        if (FormulaOf(*shape, Name::Width).find("ThePage!") != std::string_view::npos) continue;
        const Rect block = BlockOf(document, page, *shape);
        const bool rides = FormulaOf(*shape, Name::PinY).find("ThePage!PageHeight") != std::string_view::npos;
        size.width = std::max(size.width, rides ? block.x1 - kTitleInset : block.Width());
        size.height = std::max(size.height, rides ? top - block.y0 : block.Height());
    }
    return size;
}

double TopMargin(const layout::Box& title) {
    return title.height > 0 ? std::max(kMargin, title.height + 2 * kTitleInset) : kMargin;
}

/// Moves everything but decorations. All of a shape's own coordinates go with its ends or its pin, so no
/// formula has to be asked again.
void Translate(Page& page, double dx, double dy) {
    for (const auto& shape : page.shapes) {
        if (RoleOf(page, *shape) == Role::Decoration) continue;
        for (const auto& [cells, by] : {std::pair{std::array{Name::PinX, Name::BeginX, Name::EndX}, dx},
                                        {std::array{Name::PinY, Name::BeginY, Name::EndY}, dy}}) {
            for (const Name name : cells) {
                if (Cell* cell = shape->cells.Find(name)) cell->value += by;
            }
        }
    }
}

layout::Style StyleOf(OpenDocument& document, Page& page) {
    const auto cell = [&](Name name) { return static_cast<int>(Number(document, page, page.sheet, name)); };
    return layout::StyleOfCells(cell(Name::PlaceStyle), cell(Name::PlaceDepth), cell(Name::RouteStyle),
                                cell(Name::LineRouteExt));
}

/// A page as the layout sees it, with the shapes that its boxes and lines are.
struct PageGraph {
    layout::Graph graph;
    std::vector<Shape*> boxes, lines;
    std::vector<NoteRoom> rooms;             ///< One for each box.
    std::vector<std::vector<Shape*>> notes;  ///< Those on the page, for each box.
};

/// Room for the notes that are there, or else for those that are to come.
void AddNoteRooms(OpenDocument& document, Page& page, PageGraph& on) {
    on.notes = NotesOf(page, on.boxes);
    for (std::size_t i = 0; i < on.boxes.size(); ++i) {
        NoteRoom room{SizesOfNotes(document, page, on.notes[i])};
        const auto reserved = document.noteRooms.find({page.id, on.boxes[i]->id});
        if (room.notes.empty() && reserved != document.noteRooms.end()) room = reserved->second;
        const layout::Box size = RoomFor(room.notes);
        on.graph.boxes[i].noteWidth = size.width;
        on.graph.boxes[i].noteHeight = size.height;
        on.rooms.push_back(std::move(room));
    }
}

PageGraph GraphOf(OpenDocument& document, Page& page) {
    PageGraph result;
    std::unordered_map<int, int> boxById;
    for (const auto& shape : page.shapes) {
        if (RoleOf(page, *shape) != Role::Box) continue;
        boxById.emplace(shape->id, static_cast<int>(result.boxes.size()));
        result.boxes.push_back(shape.get());
        const Rect block = BlockOf(document, page, *shape);
        result.graph.boxes.push_back({block.Width(), block.Height()});
    }
    std::unordered_map<int, std::pair<int, int>> ends;  // A line's ID to the boxes at its ends.
    for (const auto& connect : page.connects) {
        const auto box = boxById.find(connect.toSheet);
        if (box == boxById.end()) continue;
        auto& pair = ends.try_emplace(connect.fromSheet, -1, -1).first->second;
        (connect.fromCell == "BeginX" ? pair.first : pair.second) = box->second;
    }
    // In the order of their making: what was sent to the back came later.
    std::vector<Shape*> lines;
    for (const auto& shape : page.shapes) {
        if (RoleOf(page, *shape) == Role::Line) lines.push_back(shape.get());
    }
    std::sort(lines.begin(), lines.end(), [](const Shape* a, const Shape* b) { return a->id < b->id; });
    for (Shape* shape : lines) {
        const auto joined = ends.find(shape->id);
        if (joined == ends.end() || joined->second.first < 0 || joined->second.second < 0) continue;
        layout::Line line{joined->second.first, joined->second.second, 0, 0};
        if (!TextOf(*shape).empty()) {
            const Rect label = LabelOf(document, page, *shape);
            line.labelWidth = label.Width() * kLabelSlack;
            line.labelHeight = label.Height() * kLabelSlack;
        }
        result.lines.push_back(shape);
        result.graph.lines.push_back(line);
    }
    AddNoteRooms(document, page, result);
    return result;
}

/// What a page of before shows, and what of it this page shows too.
struct DrawnBefore {
    PageGraph on;
    layout::Placement placement;
    layout::Matches matches;
};

layout::NoteSide SideOf(const Rect& box, const Rect& note) {
    if (note.x0 >= box.x1) return layout::NoteSide::Right;
    if (note.x1 <= box.x0) return layout::NoteSide::Left;
    return note.y0 >= box.y1 ? layout::NoteSide::Above : layout::NoteSide::Below;
}

/// Where boxes and lines are. A line without a route of its own, which another program drew, has none.
layout::Placement PlacementOf(OpenDocument& document, Page& page, const PageGraph& on) {
    layout::Placement placement;
    for (std::size_t i = 0; i < on.boxes.size(); ++i) {
        const Rect box = BlockOf(document, page, *on.boxes[i]);
        placement.centers.push_back(box.Center());
        const bool hasNote = !on.notes[i].empty();
        placement.noteSides.push_back(hasNote ? SideOf(box, NoteOf(document, page, *on.notes[i].front()))
                                              : layout::NoteSide::Right);
    }
    for (Shape* line : on.lines) {
        layout::Route& route = placement.routes.emplace_back();
        if (HasOwnGeometry(*line)) route.points = RouteOf(document, page, *line);
        route.label = LabelOf(document, page, *line).Center();
    }
    return placement;
}

/// The boxes of the same names, letter case ignored; -1 for one whose name is new.
std::vector<int> BoxesByName(const PageGraph& on, const PageGraph& before) {
    std::unordered_map<std::string, int> byName;
    for (std::size_t i = 0; i < before.boxes.size(); ++i)
        byName.emplace(UpperCase(before.boxes[i]->name), static_cast<int>(i));
    std::vector<int> boxes;
    for (const Shape* box : on.boxes) {
        const auto same = byName.find(UpperCase(box->name));
        boxes.push_back(same == byName.end() ? -1 : same->second);
    }
    return boxes;
}

DrawnBefore ReadBefore(const FormerPage& former, const PageGraph& on) {
    PageGraph before = GraphOf(former.document, former.page);
    layout::Matches matches = layout::MatchGraphs(on.graph, before.graph, BoxesByName(on, before));
    layout::Placement placement = PlacementOf(former.document, former.page, before);
    return {std::move(before), std::move(placement), std::move(matches)};
}

void MoveTo(OpenDocument& document, Page& page, Shape& shape, Point center) {
    const Rect block = BlockOf(document, page, shape);
    const Point middle = block.Center();
    Recalculation& cells = document.recalculation;
    cells.SetValue(page, shape, Name::PinX,
                   Value::Of(cells.Number(page, shape, Name::PinX) + center.x - middle.x));
    cells.SetValue(page, shape, Name::PinY,
                   Value::Of(cells.Number(page, shape, Name::PinY) + center.y - middle.y));
}

}  // namespace

std::vector<std::vector<Shape*>> NotesOf(const Page& page, const std::vector<Shape*>& boxes) {
    std::unordered_map<const Shape*, std::size_t> index;
    for (std::size_t i = 0; i < boxes.size(); ++i) index.emplace(boxes[i], i);
    std::vector<std::vector<Shape*>> notes(boxes.size());
    for (const auto& shape : page.shapes) {
        if (RoleOf(page, *shape) != Role::Note) continue;
        const auto box = index.find(GluedTo(page, *shape, true));
        if (box != index.end()) notes[box->second].push_back(shape.get());
    }
    return notes;
}

Role RoleOf(const Page& page, const Shape& shape) {
    if (IsAnnotation(shape)) return Role::Note;
    const int kind = static_cast<int>(Number(shape, Name::ObjType));
    if (IsOneDimensional(shape)) return kind == kRoutable || kind == kUndecided ? Role::Line : Role::Other;
    if (kind == kPlaceable) return Role::Box;
    if (kind == kUndecided) return HasLine(page, shape) ? Role::Box : Role::Other;
    return Role::Decoration;
}

Rect BlockOf(OpenDocument& document, Page& page, Shape& shape) {
    const double x0 =
        Number(document, page, shape, Name::PinX) - Number(document, page, shape, Name::LocPinX);
    const double y0 =
        Number(document, page, shape, Name::PinY) - Number(document, page, shape, Name::LocPinY);
    return {x0, y0, x0 + Number(document, page, shape, Name::Width),
            y0 + Number(document, page, shape, Name::Height)};
}

Rect LabelOf(OpenDocument& document, Page& page, Shape& line) {
    const auto number = [&](Name name) { return Number(document, page, line, name); };
    const double width = number(Name::TxtWidth), height = number(Name::TxtHeight);
    const double x0 =
        number(Name::PinX) - number(Name::LocPinX) + number(Name::TxtPinX) - number(Name::TxtLocPinX);
    const double y0 =
        number(Name::PinY) - number(Name::LocPinY) + number(Name::TxtPinY) - number(Name::TxtLocPinY);
    return {x0, y0, x0 + width, y0 + height};
}

Rect NoteOf(OpenDocument& document, Page& page, Shape& note) {
    const double x = Number(document, page, note, Name::PinX), y = Number(document, page, note, Name::PinY);
    const double width = Number(document, page, note, Name::Width);
    FontLibrary& fonts = document.Shop().fonts;
    return {x, y, x + std::min(width, TextWidth(fonts, *document.model, note)),
            y + std::min(Number(document, page, note, Name::Height),
                         TextHeight(fonts, *document.model, note, width))};
}

std::vector<layout::Box> SizesOfNotes(OpenDocument& document, Page& page, const std::vector<Shape*>& notes) {
    std::vector<layout::Box> sizes;
    for (Shape* note : notes) {
        const Rect area = NoteOf(document, page, *note);
        sizes.push_back({area.Width(), area.Height()});
    }
    return sizes;
}

namespace {

/// The notes that are there move into the rooms beside their boxes; for those to come the rooms are kept.
void PutNotes(OpenDocument& document, Page& page, const PageGraph& on,
              const std::vector<layout::NoteSide>& sides) {
    for (std::size_t i = 0; i < on.boxes.size(); ++i) {
        NoteRoom room = on.rooms[i];
        if (room.notes.empty()) continue;
        room.side = sides[i];
        const Rect box = BlockOf(document, page, *on.boxes[i]);
        const std::vector<Rect> places = PlacesInRoom(box, room.notes, room.side);
        for (std::size_t k = 0; k < on.notes[i].size(); ++k)
            PutNote(document, page, *on.notes[i][k], places[k], box);
        document.noteRooms[{page.id, on.boxes[i]->id}] = std::move(room);
    }
}

/// All boxes and lines become as they were.
void TakeOver(OpenDocument& document, Page& page, const PageGraph& on, const DrawnBefore& before) {
    Recalculation& cells = document.recalculation;
    const auto copy = [&](Shape& to, const Shape& from, Name name) {
        cells.SetValue(page, to, name, Value::Of(Number(from, name)));
    };
    for (std::size_t i = 0; i < on.boxes.size(); ++i) {
        const auto same = static_cast<std::size_t>(before.matches.boxes[i]);
        for (const Name name : {Name::PinX, Name::PinY}) copy(*on.boxes[i], *before.on.boxes[same], name);
    }
    cells.Settle();
    for (std::size_t k = 0; k < on.lines.size(); ++k) {
        const auto same = static_cast<std::size_t>(before.matches.lines[k]);
        CopyRoute(document, page, *on.lines[k], *before.on.lines[same]);
    }
    std::vector<layout::NoteSide> sides;
    for (const int same : before.matches.boxes)
        sides.push_back(before.placement.noteSides[static_cast<std::size_t>(same)]);
    PutNotes(document, page, on, sides);
}

}  // namespace

void LayOutPage(OpenDocument& document, Page& page, const FormerPage* former) {
    document.recalculation.Settle();
    const PageGraph on = GraphOf(document, page);
    if (on.boxes.empty()) return;
    const layout::Style style = StyleOf(document, page);
    std::optional<DrawnBefore> before;
    if (former && StyleOf(former->document, former->page) == style) before = ReadBefore(*former, on);
    for (Shape* line : on.lines) DropRoute(document, page, *line);
    if (before && layout::CanStay(on.graph, before->matches, before->on.graph, before->placement)) {
        TakeOver(document, page, on, *before);
    } else {
        const layout::FormerPlaces places =
            before ? layout::PlacesOf(before->matches, before->placement) : layout::FormerPlaces();
        const layout::Placement placement = layout::PlaceAndRoute(on.graph, style, places);
        for (std::size_t i = 0; i < on.boxes.size(); ++i)
            MoveTo(document, page, *on.boxes[i], placement.centers[i]);
        document.recalculation.Settle();
        PutNotes(document, page, on, placement.noteSides);
        const auto jumps = FindJumps(placement.routes);
        for (std::size_t k = 0; k < on.lines.size(); ++k)
            WriteRoute(document, page, *on.lines[k], placement.routes[k], jumps[k]);
    }
    document.recalculation.Settle();
}

void ResizePageToContents(OpenDocument& document, Page& page) {
    document.recalculation.Settle();
    const auto contents = ContentsOf(document, page);
    if (!contents) return;
    const layout::Box title = TitleOf(document, page);
    const double width = std::max(contents->Width() + 2 * kMargin, title.width + 2 * kTitleInset);
    const double height = contents->Height() + kMargin + TopMargin(title);
    Recalculation& cells = document.recalculation;
    cells.SetValue(page, page.sheet, Name::PageWidth, Value::Of(width));
    cells.SetValue(page, page.sheet, Name::PageHeight, Value::Of(height));
    cells.SetValue(page, page.sheet, Name::PrintPageOrientation, Value::Of(PaperOrientation(width, height)));
    cells.Settle();
}

void CenterContents(OpenDocument& document, Page& page) {
    document.recalculation.Settle();
    const auto contents = ContentsOf(document, page);
    if (!contents) return;
    const double width = Number(document, page, page.sheet, Name::PageWidth);
    const double height = Number(document, page, page.sheet, Name::PageHeight);
    const double top = TopMargin(TitleOf(document, page)), middle = (kMargin + height - top) / 2;
    const Point by = Point{width / 2, middle} - contents->Center();
    constexpr double kHair = 1e-9;  // They are in the middle, but for what rounding leaves.
    if (Length(by) > kHair) Translate(page, by.x, by.y);
}

void GrowPageToContents(OpenDocument& document, Page& page) {
    constexpr double kHair = 1e-6;
    const auto contents = ContentsOf(document, page);
    const double width = Number(document, page, page.sheet, Name::PageWidth);
    const double height = Number(document, page, page.sheet, Name::PageHeight);
    const Rect free{kMargin - kHair, kMargin - kHair, width - kMargin + kHair,
                    height - TopMargin(TitleOf(document, page)) + kHair};
    if (!contents || (contents->x0 > free.x0 && contents->y0 > free.y0 && contents->x1 < free.x1 &&
                      contents->y1 < free.y1))
        return;
    ResizePageToContents(document, page);
    CenterContents(document, page);
}

}  // namespace norvelis::drawing
