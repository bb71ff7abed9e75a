#include "diagram/draw_chosen.h"

#include <fmt/format.h>

#include "diagram/color.h"
#include "diagram/draw_preparation.h"
#include "diagram/page_references.h"
#include "diagram/record_shapes.h"
#include "dictionary/schema_contents.h"

namespace norvelis {

namespace {

void AddChosenToPage(DrawingState& drawing, const ChosenPage& chosen, const PageRef& page) {
    page->SetName(chosen.name);
    for (const std::string& record : chosen.records) {
        drawing.gOwnerColor = PickLightColor(drawing.app.random);
        CreateRecordShape(drawing, page, drawing.gDrawSchema, record);
        ProgressStep(drawing);
        drawing.app.host.Yield();
    }
    for (const PageReference& reference : chosen.references) CreatePageReference(drawing, page, reference);
    SnapshotDrawing(drawing, *page);
}

}  // namespace

DrawnFile DrawChosenRecords(DrawingState& drawing, const std::string& schema, const RecordChoice& choice) {
    drawing.BeginCommand();
    const ChosenRecords chosen = ChooseRecords(dictionary::ReadSchema(drawing.store, schema), choice);
    if (!chosen.refusal.empty()) {
        drawing.report("Nothing was drawn: " + chosen.refusal + ".");
        return {};
    }
    DrawOrder order;
    order.name = chosen.drawing;
    order.location = DrawingLocation(drawing);
    order.subfolder = schema.empty() ? kNameless : schema;
    order.visible = drawing.options.visible.value_or(false);
    std::size_t records = 0;
    for (const ChosenPage& page : chosen.pages) {
        records += page.records.size();
        order.pages.push_back(
            {[&drawing, &page](const PageRef& onPage) { AddChosenToPage(drawing, page, onPage); },
             page.title});
    }
    drawing.gDrawSchema = schema;
    const ShownBars bars = BarsFromNothing(drawing.app.progress);
    ProgressSetMax(drawing, static_cast<int>(records));
    const DrawResult result = DrawDrawing(drawing, kDrawChosen, order);
    ReportNotWritten(drawing);
    return {result, order.File()};
}

std::string SizeHint(const DrawingState& drawing) {
    constexpr double kLegible = 1.5;  // Points.
    if (drawing.pointsOnA0 <= 0 || drawing.pointsOnA0 >= kLegible) return {};
    return fmt::format("On one A0 sheet the labels are {:.1f} points high", drawing.pointsOnA0);
}

}  // namespace norvelis
