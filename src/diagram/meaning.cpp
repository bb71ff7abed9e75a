#include "diagram/meaning.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/name_key.h"
#include "base/text.h"
#include "diagram/color.h"
#include "dictionary/records.h"

namespace norvelis {

namespace {

// Fills for black, red and blue text, from light to dark in even steps of grey.
constexpr std::array kFills = {"RGB(255,247,196)", "RGB(207,236,255)", "RGB(255,214,170)",
                               "RGB(170,224,190)", "RGB(240,182,210)", "RGB(158,190,232)"};
constexpr std::array kLines = {"RGB(0,0,0)",    "RGB(0,92,170)",   "RGB(170,60,0)",
                               "RGB(0,110,80)", "RGB(140,30,110)", "RGB(120,95,0)"};
constexpr int kSolid = 1,
              kPatterns = 4;  ///< Published numbers of LinePattern: solid, dash, dot, dash and dot.

/// The n-th value's place among so many looks, and the line pattern of its round.
struct Turn {
    std::size_t look;
    int pattern;
};
Turn TurnOf(std::size_t n, std::size_t looks) {
    return {n % looks, kSolid + static_cast<int>(n / looks % kPatterns)};
}

std::string ValueOf(const DrawingState& drawing, const Recordset& record) {
    const char* column = drawing.options.meaning == BoxMeaning::Area ? "areaname" : "recmode";
    return std::string(Trim(record.Text(column)));
}

/// All values of the schema by name, so that each looks alike on all of its drawings.
void ReadValues(DrawingState& drawing) {
    for (auto row = dictionary::RecordsByName(drawing.store, drawing.gDrawSchema); !row.Eof(); row.MoveNext())
        drawing.values.push_back(NameKey(ValueOf(drawing, row)));
    std::ranges::sort(drawing.values);
    const auto doubles = std::ranges::unique(drawing.values);
    drawing.values.erase(doubles.begin(), doubles.end());
}

std::size_t PlaceOf(const std::vector<std::string>& values, const std::string& value) {
    return static_cast<std::size_t>(std::ranges::lower_bound(values, NameKey(value)) - values.begin());
}

ShapeRef PartOf(engine::Shape& group, std::string_view name) {
    const auto parts = group.Shapes();
    const int count = parts ? parts->Count() : 0;
    for (int i = 1; i <= count; ++i) {
        ShapeRef part = parts->Item(i);
        if (part && part->Name() == name) return part;
    }
    return nullptr;
}

void SetPattern(engine::Shape& shape, int pattern) {
    if (pattern != kSolid) SetFormulaU(shape.Cells("LinePattern"), std::to_string(pattern));
}

void Fill(engine::Shape& shape, const Turn& turn) {
    SetFormulaU(shape.CellsSRC(engine::kFillForegnd), kFills[turn.look]);
    SetPattern(shape, turn.pattern);
}

}  // namespace

void ShowMeaning(DrawingState& drawing, engine::Shape& box, const Recordset& record) {
    if (drawing.values.empty()) ReadValues(drawing);
    const std::string value = ValueOf(drawing, record);
    Fill(box, TurnOf(PlaceOf(drawing.values, value), kFills.size()));
    drawing.shownValues.insert(value);
}

bool ColorLine(DrawingState& drawing, engine::Shape& line, const std::string& owner) {
    const CellRef color = line.Cells("LineColor");
    if (!drawing.options.linesByOwner) return SetFormulaU(color, PickDarkColor(drawing.app.random));
    const std::size_t place = drawing.owners.try_emplace(NameKey(owner), drawing.owners.size()).first->second;
    const Turn turn = TurnOf(place, kLines.size());
    SetPattern(line, turn.pattern);
    return SetFormulaU(color, kLines[turn.look]);
}

void AddLegend(DrawingState& drawing, const PageRef& page, const engine::Ref<engine::Master>& entry,
               engine::Shape& title) {
    constexpr int kRows = 4;
    constexpr double kRowPitch = 1.15, kColumnPitch = 13;  // Heights of an entry.
    if (drawing.shownValues.empty() || !entry) return;
    const auto layers = page->Layers();
    const auto layer = layers ? layers->Add(kDecorationLayer) : nullptr;
    int place = 0;
    for (const std::string& value : drawing.shownValues) {
        const ShapeRef shape = page->Drop(entry, 0, 0);
        if (!shape) return;
        if (const ShapeRef swatch = PartOf(*shape, "Swatch"))
            Fill(*swatch, TurnOf(PlaceOf(drawing.values, value), kFills.size()));
        if (const ShapeRef name = PartOf(*shape, "Name")) name->SetText(value.empty() ? "none" : value);
        const std::string beside =
            fmt::format("Sheet.{0}!PinX-Sheet.{0}!LocPinX+Sheet.{0}!Width", title.ID());
        SetFormulaU(shape->CellsSRC(engine::kPinX),
                    fmt::format("{}+0.2 in+Height*{}", beside, place / kRows * kColumnPitch));
        SetFormulaU(shape->CellsSRC(engine::kPinY),
                    fmt::format("ThePage!PageHeight-0.25 in-Height*{}", place % kRows * kRowPitch));
        if (layer) layer->Add(shape, 0);
        ++place;
    }
}

}  // namespace norvelis
