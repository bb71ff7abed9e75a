#include "diagram/legend.h"

#include <fmt/format.h>

#include <functional>

#include "diagram/common.h"
#include "diagram/difference_marks.h"
#include "diagram/meaning.h"

namespace norvelis {

namespace {

struct LegendEntry {
    std::string text;
    std::function<void(engine::Shape& swatch)> look;
};

std::string Heading(const DrawingState& drawing) {
    if (drawing.marks) return "What changed, of records and sets";
    std::string text;
    if (drawing.options.meaning == BoxMeaning::Area) text = "Boxes by area";
    if (drawing.options.meaning == BoxMeaning::LocationMode) text = "Boxes by location mode";
    if (!drawing.options.linesByOwner) return text;
    return text.empty() ? "Lines by owner" : text + ", lines by owner";
}

std::vector<LegendEntry> Entries(const DrawingState& drawing) {
    std::vector<LegendEntry> entries;
    const auto addMark = [&entries](const char* text, Mark mark) {
        entries.push_back({text, [mark](engine::Shape& swatch) {
                               const Marking marking{mark, {}};
                               StyleBox(swatch, &marking);  // In small.
                               const char* weight = mark == Mark::Added ? "1.5 pt" : "0.6 pt";
                               SetFormulaU(swatch.CellsU("LineWeight"), weight);
                           }});
    };
    if (drawing.marks) {
        addMark("added: thick", Mark::Added);
        addMark("removed: dashed", Mark::Removed);
        addMark("changed or renamed: dashes and dots", Mark::Changed);
    }
    for (const std::string& value : drawing.shownValues) {
        entries.push_back({value.empty() ? "none" : value, [&drawing, value](engine::Shape& swatch) {
                               FillByValue(drawing, swatch, value);
                           }});
    }
    return entries;
}

/// Places legend shapes in columns beside the title. All grows with the page, so places are formulas.
class LegendWriter {
  public:
    LegendWriter(const PageRef& page, const LegendMasters& masters, engine::Shape& title)
        : page_(page),
          masters_(masters),
          left_(fmt::format("Sheet.{0}!PinX-Sheet.{0}!LocPinX+Sheet.{0}!Width+0.2 in", title.ID())) {
        const auto layers = page->Layers();
        layer_ = layers ? layers->Add(kDecorationLayer) : nullptr;
    }

    void Add(const std::string& heading) {
        const ShapeRef shape = Drop(masters_.heading);
        if (!shape) return;
        if (const ShapeRef name = PartOf(*shape, "Name")) name->SetText(heading);
        Place(*shape, left_, "0");
    }
    void Add(const LegendEntry& entry) {
        constexpr int kRows = 4;
        constexpr double kPitch = 1.15;  // Heights of an entry; the first row is the heading's.
        const ShapeRef shape = Drop(masters_.entry);
        if (!shape) return;
        if (const ShapeRef swatch = PartOf(*shape, "Swatch")) entry.look(*swatch);
        if (const ShapeRef name = PartOf(*shape, "Name")) name->SetText(entry.text);
        if (row_ == kRows) BeginColumn();
        Place(*shape, left_, fmt::format("Height*{}", (row_ + 1) * kPitch));
        const std::string width = fmt::format("Sheet.{}!Width", shape->ID());
        widths_ += row_ == 0 ? width : "," + width;
        if (row_ == 0) first_ = shape->ID();
        ++row_;
    }

  private:
    ShapeRef Drop(const engine::Ref<engine::Master>& master) const {
        const ShapeRef shape = page_->Drop(master, 0, 0);
        if (shape && layer_) layer_->Add(shape, 0);
        return shape;
    }
    static void Place(engine::Shape& shape, const std::string& left, const std::string& below) {
        SetFormulaU(shape.CellsSRC(engine::kPinX), left);
        SetFormulaU(shape.CellsSRC(engine::kPinY), "ThePage!PageHeight-0.25 in-" + below);
    }
    /// To the right of the widest entry of the column before.
    void BeginColumn() {
        left_ = fmt::format("Sheet.{}!PinX+MAX({})+Height", first_, widths_);
        widths_.clear();
        row_ = 0;
    }

    const PageRef& page_;
    const LegendMasters& masters_;
    engine::Ref<engine::Layer> layer_;
    std::string left_, widths_;
    int row_ = 0, first_ = 0;
};

}  // namespace

bool HasLegend(const DrawingState& drawing) {
    return !Heading(drawing).empty();
}

void AddLegend(DrawingState& drawing, const PageRef& page, const LegendMasters& masters,
               engine::Shape& title) {
    if (!HasLegend(drawing) || !masters.heading || !masters.entry) return;
    LegendWriter legend(page, masters, title);
    legend.Add(Heading(drawing));
    for (const LegendEntry& entry : Entries(drawing)) legend.Add(entry);
}

}  // namespace norvelis
