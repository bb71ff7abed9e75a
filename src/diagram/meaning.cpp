#include "diagram/meaning.h"

#include <algorithm>
#include <array>

#include "base/name_key.h"
#include "base/text.h"
#include "diagram/color.h"
#include "dictionary/records.h"
#include "dictionary/sets.h"

namespace norvelis {

namespace {

// Of six, the first three have a solid outline, the others lie between them and have a dashed one: prints in
// grey keep too few steps apart for black, red and blue text.
constexpr std::array kFills = {"RGB(250,250,165)", "RGB(165,230,250)", "RGB(220,190,135)",
                               "RGB(215,245,195)", "RGB(215,205,200)", "RGB(100,195,245)"};
// From dark to light.
constexpr std::array kLines = {"RGB(0,0,0)",     "RGB(84,0,108)",   "RGB(72,12,216)",
                               "RGB(168,48,12)", "RGB(60,132,120)", "RGB(156,132,228)"};
// Published numbers of LinePattern: solid, dash, dot, dash and dot.
constexpr std::size_t kSolid = 1, kPatterns = 4;
/// After which color and pattern would meet again. One step of the pattern more, and all 24 pairs come before
/// one comes again.
constexpr std::size_t kRound = 12;

std::string ValueOf(const DrawingState& drawing, const Recordset& record) {
    const char* column = drawing.options.meaning == BoxMeaning::Area ? "areaname" : "recmode";
    return std::string(Trim(record.Text(column)));
}

void KeepEachOnce(std::vector<std::string>& names) {
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

/// All values of the schema by name, so that each looks alike on all of its drawings.
void ReadValues(DrawingState& drawing) {
    for (auto row = dictionary::RecordsByName(drawing.store, drawing.gDrawSchema); !row.Eof(); row.MoveNext())
        drawing.values.push_back(NameKey(ValueOf(drawing, row)));
    KeepEachOnce(drawing.values);
}

void ReadOwners(DrawingState& drawing) {
    for (auto row = dictionary::Sets(drawing.store); !row.Eof(); row.MoveNext()) {
        if (IsOfDrawnSchema(drawing, row)) drawing.owners.push_back(NameKey(Trim(row.Text("recordname"))));
    }
    KeepEachOnce(drawing.owners);
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

Look BoxLook(std::size_t n) {
    constexpr std::size_t kAlike = 3;  // Fills in a row with one outline.
    return {kFills[n % kFills.size()], kSolid + (n / kAlike + n / kRound) % kPatterns};
}

Look LineLook(std::size_t n) {
    return {kLines[n % kLines.size()], kSolid + (n + n / kRound) % kPatterns};
}

void ShowMeaning(DrawingState& drawing, engine::Shape& box, const Recordset& record) {
    if (drawing.values.empty()) ReadValues(drawing);
    const std::string value = ValueOf(drawing, record);
    FillByValue(drawing, box, value);
    drawing.shownValues.insert(value);
}

void FillByValue(const DrawingState& drawing, engine::Shape& shape, const std::string& value) {
    Fill(shape, BoxLook(PlaceOf(drawing.values, value)));
}

bool ColorLine(DrawingState& drawing, engine::Shape& line, const std::string& owner) {
    const CellRef color = line.Cells("LineColor");
    if (!drawing.options.linesByOwner) return SetFormulaU(color, PickDarkColor(drawing.app.random));
    if (drawing.owners.empty()) ReadOwners(drawing);
    const Look look = LineLook(PlaceOf(drawing.owners, owner));
    SetPattern(line, look.pattern);
    return SetFormulaU(color, look.color);
}

}  // namespace norvelis
