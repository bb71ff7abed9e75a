#include "diagram/meaning.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/name_key.h"
#include "base/text.h"
#include "diagram/color.h"
#include "diagram/common.h"
#include "dictionary/records.h"

namespace norvelis {

namespace {

// Fills for black, red and blue text, from light to dark in even steps of grey.
constexpr std::array kFills = {"RGB(255,247,196)", "RGB(207,236,255)", "RGB(255,210,160)",
                               "RGB(170,224,190)", "RGB(228,166,196)", "RGB(140,176,224)"};
constexpr std::array kLines = {"RGB(0,0,0)",    "RGB(0,70,150)",   "RGB(165,50,0)",
                               "RGB(0,125,90)", "RGB(165,60,145)", "RGB(150,125,0)"};
// Published numbers of LinePattern: solid, dash, dot, dash and dot.
constexpr std::size_t kSolid = 1, kPatterns = 4;

struct Look {
    std::string color;
    std::size_t pattern;
};

/// Of the n-th value: all fills with a solid outline, then all with the next pattern.
Look BoxLook(std::size_t n) {
    return {kFills[n % kFills.size()], kSolid + n / kFills.size() % kPatterns};
}

/// Of the n-th owner: the next differs from it in color and pattern, for dark colors look alike in grey. All
/// 24 pairs come before one comes again.
Look LineLook(std::size_t n) {
    constexpr std::size_t kRound = 12;  // After which color and pattern would meet again.
    return {kLines[n % kLines.size()], kSolid + (n + n / kRound) % kPatterns};
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
    drawing.values.erase(std::unique(drawing.values.begin(), drawing.values.end()), drawing.values.end());
}

std::size_t PlaceOf(const std::vector<std::string>& values, const std::string& value) {
    return static_cast<std::size_t>(std::ranges::lower_bound(values, NameKey(value)) - values.begin());
}

void SetPattern(engine::Shape& shape, std::size_t pattern) {
    if (pattern != kSolid) SetFormulaU(shape.Cells("LinePattern"), std::to_string(pattern));
}

void Fill(engine::Shape& shape, const Look& look) {
    SetFormulaU(shape.CellsSRC(engine::kFillForegnd), look.color);
    SetPattern(shape, look.pattern);
}

}  // namespace

void ShowMeaning(DrawingState& drawing, engine::Shape& box, const Recordset& record) {
    if (drawing.values.empty()) ReadValues(drawing);
    const std::string value = ValueOf(drawing, record);
    Fill(box, BoxLook(PlaceOf(drawing.values, value)));
    drawing.shownValues.insert(value);
}

bool ColorLine(DrawingState& drawing, engine::Shape& line, const std::string& owner) {
    const CellRef color = line.Cells("LineColor");
    if (!drawing.options.linesByOwner) return SetFormulaU(color, PickDarkColor(drawing.app.random));
    const std::size_t place = drawing.owners.try_emplace(NameKey(owner), drawing.owners.size()).first->second;
    const Look look = LineLook(place);
    SetPattern(line, look.pattern);
    return SetFormulaU(color, look.color);
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
        const int column = place / kRows, row = place % kRows;
        const ShapeRef shape = page->Drop(entry, 0, 0);
        if (!shape) return;
        if (const ShapeRef swatch = PartOf(*shape, "Swatch"))
            Fill(*swatch, BoxLook(PlaceOf(drawing.values, value)));
        if (const ShapeRef name = PartOf(*shape, "Name")) name->SetText(value.empty() ? "none" : value);
        const std::string beside =
            fmt::format("Sheet.{0}!PinX-Sheet.{0}!LocPinX+Sheet.{0}!Width", title.ID());
        SetFormulaU(shape->CellsSRC(engine::kPinX),
                    fmt::format("{}+0.2 in+Height*{}", beside, column * kColumnPitch));
        SetFormulaU(shape->CellsSRC(engine::kPinY),
                    fmt::format("ThePage!PageHeight-0.25 in-Height*{}", row * kRowPitch));
        if (layer) layer->Add(shape, 0);
        ++place;
    }
}

}  // namespace norvelis
