#include "diagram/annotation.h"

#include "base/text.h"
#include "diagram/common.h"
#include "diagram/page_references.h"
#include "diagram/record_shapes.h"
#include "diagram/shape_text.h"
#include "dictionary/sets.h"

namespace norvelis {

using engine::CharProperty;

namespace {

constexpr double kNoteOffset = 0.7;  // inches from the pin of the box, both ways
constexpr double kNoteSize = 2.0;
constexpr int kSortKeys = 16;

/// The index, its sort keys with their order, and the sort option, each on a line of its own.
std::string NoteText(const Recordset& index) {
    const auto column = [&index](const std::string& name) { return std::string(Trim(index.Text(name))); };
    std::string text = column("recordname");
    for (int i = 1; i <= kSortKeys; ++i) {
        const std::string number = std::to_string(i);
        const std::string key = column("sortkey" + number);
        if (!key.empty()) text.append(kLineBreak).append(key + " " + column("sortorder" + number));
    }
    const std::string option = column("sortoption");
    if (!option.empty()) text.append(kLineBreak).append(option);
    return text;
}

/// What the index is noted beside; null when its member has no box on the page.
ShapeRef AnnotatedShape(const DrawingState& drawing, engine::Page& page, const Recordset& index) {
    const std::string member(Trim(index.Text("next_step")));
    if (!IsOfDrawnSchema(drawing, index) || IsOnAnotherPage(drawing, member)) return nullptr;
    return ShapeOfRecord(drawing, page, member);
}

/// A group may leave its text to the last of its members.
engine::Ref<engine::Characters> TextTarget(engine::Shape& shape) {
    const auto members = shape.Shapes();
    const int count = members ? members->Count() : 0;
    if (count > 0) {
        const CellRef ownText = shape.CellsSRC(engine::kIsTextEditTarget);
        const ShapeRef last = ownText && ownText->ResultIU() == 0.0 ? members->Item(count) : nullptr;
        if (last) return last->Characters();
    }
    return shape.Characters();
}

bool FormatRange(engine::Characters& characters, int begin, int end, int color) {
    constexpr int kSize = 6;
    return characters.SetBegin(begin) && characters.SetEnd(end) &&
           characters.SetCharProps(CharProperty::Color, color) &&
           characters.SetCharProps(CharProperty::Size, kSize) && SetDiagramFont(characters);
}

/// Text and formats of a note: its first line red, those below it teal. The range begins behind what the
/// target holds of its master's text, so that is counted before the note's own is there.
bool FillNote(engine::Shape& note, const std::string& text) {
    auto characters = TextTarget(note);
    const auto begin = characters ? characters->CharCount() : std::nullopt;
    if (!begin || !note.SetText(text)) return false;
    characters = TextTarget(note);
    if (!characters || !characters->SetText(text)) return false;
    const auto end = characters->End();
    if (!end || !characters->SetBegin(*begin) || !characters->SetEnd(*end) ||
        !characters->SetParaProps(engine::ParaProperty::HorzAlign, engine::kAlignLeft)) {
        return false;
    }
    const auto range = characters->Text();
    if (!range) return false;
    const int firstEnd = LineBreakPosition(*range);
    if (!FormatRange(*characters, *begin, firstEnd, engine::kRed)) return false;

    characters = TextTarget(note);
    const auto textEnd = characters ? characters->End() : std::nullopt;
    return textEnd && FormatRange(*characters, firstEnd, *textEnd, engine::kTeal) &&
           note.AddRow(engine::kTabSection, 0, engine::kTabRowOfTwoStops) &&
           SetResultIU(note.CellsSRC(engine::kTabStopCount), 1.0) &&
           SetResultIU(note.CellsSRC(engine::kTabStopPosition), 0.8);
}

}  // namespace

void ReserveNotes(const DrawingState& drawing, engine::Page& page) {
    DrawnShapes drawn = drawing.gDrawnShapes;
    auto index = dictionary::Indexes(drawing.store);
    for (; !index.Eof(); index.MoveNext()) {
        const ShapeRef shape = AnnotatedShape(drawing, page, index);
        const std::string text = shape ? NoteText(index) : "";
        if (!shape || drawn.Contains(text)) continue;
        drawn.Add(text);
        page.ReserveNote(shape, text, kNoteSize);
    }
}

void AnnotateShapes(DrawingState& drawing, const PageRef& page) {
    ShowText(drawing, "Annotating shapes..");
    auto index = dictionary::Indexes(drawing.store);
    for (; !index.Eof(); index.MoveNext()) {
        const ShapeRef shape = AnnotatedShape(drawing, *page, index);
        ShowText(drawing, "Annotating shape " + std::string(Trim(index.Text("next_step"))));
        if (!shape) continue;
        const auto position = [&shape](const engine::CellAddress& address) {
            const CellRef cell = shape->CellsSRC(address);
            return (cell ? cell->ResultIU() : std::nullopt).value_or(0);
        };
        SetShapetext(drawing, page, *shape, position(engine::kPinX) + kNoteOffset,
                     position(engine::kPinY) + kNoteOffset, NoteText(index));
        drawing.app.host.Yield();
    }
}

void SetShapetext(DrawingState& drawing, const PageRef& page, engine::Shape& annotated, double x, double y,
                  const std::string& text) {
    if (drawing.gDrawnShapes.Contains(text)) return;
    drawing.gDrawnShapes.Add(text);
    const ShapeRef note = DropShape(drawing.reportOnce, page, kFlowchartStencil, "ANNOTATION", x, y);
    if (!note) return;
    SetResultIU(note->CellsSRC(engine::kWidth), kNoteSize);
    SetResultIU(note->CellsSRC(engine::kHeight), kNoteSize);
    FillNote(*note, text);
    const CellRef begin = note->CellsSRC(engine::kBeginX);
    const CellRef pin = begin ? annotated.CellsSRC(engine::kPinX) : nullptr;
    if (pin) begin->GlueTo(pin);
}

}  // namespace norvelis
