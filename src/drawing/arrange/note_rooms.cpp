#include "drawing/arrange/note_rooms.h"

#include <algorithm>
#include <cstddef>

#include "base/failure.h"
#include "drawing/session/connectors.h"
#include "drawing/text/text_layout.h"
#include "layout/graph/notes.h"

namespace norvelis::drawing {

namespace {

constexpr double kBetween = 0.08;  // Inches from a note to the next.
constexpr double kIndent = 0.14;   // Of a note that a leader passes on its left.
constexpr double kStem = 0.07;     // From the edge of a note to its stem, as the master of notes has it;
constexpr double kHead = 0.14;     // from its top to the end of the stem,
constexpr double kTip = 0.05;      // and to the tip of the triangle on it.
constexpr double kCorner = 0.06;   // Kept free at the corners of boxes.

/// Off the corners of a side from `lo` to `hi`.
double OnSide(double at, double lo, double hi) {
    const double corner = std::min(kCorner, (hi - lo) / 4);
    return std::clamp(at, lo + corner, hi - corner);
}

/// How high they are together.
double HeightOfStack(const std::vector<layout::Box>& notes) {
    double height = -kBetween;
    for (const layout::Box& note : notes) height += note.height + kBetween;
    return height;
}

}  // namespace

std::optional<layout::Box> SizeOfNote(OpenDocument& document, const std::string& text, double mostWidth) {
    constexpr double kSixPoints = 6.0 / 72;
    FontLibrary& fonts = document.Shop().fonts;
    try {
        const auto stencil = document.Shop().Stencil("Basic Flowchart Shapes (US units).vss");
        const Master* master = stencil->FindMaster("Annotation");
        if (!master || master->shapes.empty()) return std::nullopt;
        Shape note;
        note.base = master->shapes.front().get();
        note.text = TextRuns{{text}};
        note.At(Name::Character)
            .At(RowKey::Number(0))
            .cells.Set(Name::Size, kSixPoints)
            .Set(Name::Font, document.model->FontIndex("Times New Roman"));
        return layout::Box{TextWidth(fonts, *document.model, note, mostWidth),
                           TextHeight(fonts, *document.model, note, mostWidth)};
    } catch (const RuntimeFailure&) {
        return std::nullopt;
    }
}

layout::Box RoomFor(const std::vector<layout::Box>& notes) {
    if (notes.empty()) return {};
    // The note that is farthest from its box is to be farther still from any other.
    constexpr double kFromOthers = 0.35;
    const double farthest =
        layout::kNoteGap + HeightOfStack(notes) - std::min(notes.front().height, notes.back().height);
    layout::Box room;
    room.height = HeightOfStack(notes) + std::max(0.0, farthest - kFromOthers);
    for (const layout::Box& note : notes) room.width = std::max(room.width, note.width);
    room.width += kIndent * static_cast<double>(notes.size() - 1);
    return room;
}

/// One below the other. Where leaders come from above or below, each note leaves those of the notes behind it
/// a way on its left.
std::vector<Rect> PlacesInRoom(const Rect& box, const std::vector<layout::Box>& notes,
                               layout::NoteSide side) {
    const layout::Box size = RoomFor(notes);
    const Rect room = layout::NoteBeside(box, size.width, size.height, side);
    const bool isAbove = side == layout::NoteSide::Above;
    std::vector<Rect> places;
    double top = isAbove ? room.y0 + HeightOfStack(notes) : room.y1;
    for (std::size_t i = 0; i < notes.size(); ++i) {
        const auto passing = static_cast<double>(isAbove ? i : notes.size() - 1 - i);
        const double x0 = side == layout::NoteSide::Left    ? room.x1 - notes[i].width
                          : side == layout::NoteSide::Right ? room.x0
                                                            : room.x0 + kIndent * passing;
        places.push_back({x0, top - notes[i].height, x0 + notes[i].width, top});
        top -= notes[i].height + kBetween;
    }
    return places;
}

Leader LeaderOf(const Rect& box, const Rect& note) {
    const double stem = note.x0 + kStem;
    if (note.x0 < box.x1 && note.x1 > box.x0) {
        const bool isAbove = note.y0 >= box.y1;
        return {{OnSide(stem, box.x0, box.x1), isAbove ? box.y1 : box.y0},
                {stem, isAbove ? note.y0 : note.y1 - kTip}};
    }
    const bool isRight = note.x0 >= box.x1;
    const double y = OnSide(note.y0, box.y0, box.y1);
    return {{isRight ? box.x1 : box.x0, y},
            {isRight ? note.x0 : note.x1, std::clamp(y, note.y0, std::max(note.y0, note.y1 - kHead))}};
}

void PutNote(OpenDocument& document, Page& page, Shape& note, const Rect& place, const Rect& box) {
    Recalculation& cells = document.recalculation;
    cells.SetValue(page, note, Name::PinX, Value::Of(place.x0));
    cells.SetValue(page, note, Name::PinY, Value::Of(place.y0));
    cells.Settle();
    if (GluedTo(page, note, true)) PutBegin(document, page, note, LeaderOf(box, place).begin);
}

}  // namespace norvelis::drawing
