#include "diagram/difference_legend.h"

#include "base/text.h"
#include "diagram/common.h"
#include "diagram/connectors.h"
#include "diagram/difference_marks.h"
#include "diagram/record_shapes.h"

namespace norvelis {

namespace {

ShapeRef LegendBox(DrawingState& drawing, const PageRef& page, const std::string& text,
                   const Marking* marking) {
    const ShapeRef box =
        DropShape(drawing.reportOnce, page, kFlowchartStencil, GetStepMaster("PROCESS"), 0.5, 0.5);
    if (!box) return nullptr;
    box->SetText(text);
    SetFormula(box->Cells("Char.Size"), kSixPoints);
    SizeToText(*box);
    StyleBox(*box, marking);
    return box;
}

}  // namespace

void AddLegend(DrawingState& drawing, const PageRef& page) {
    const ShapeRef legend = LegendBox(drawing, page, "LEGEND: WHAT CHANGED", nullptr);
    if (!legend) return;
    const struct {
        Marking marking;
        const char *record, *set;
    } samples[] = {
        {{Mark::Added, {}}, "ADDED RECORD\nthick outline", "ADDED SET (thick)"},
        {{Mark::Removed, {}}, "REMOVED RECORD\ndashed outline", "REMOVED SET (dashed)"},
        {{Mark::Changed, {}},
         "CHANGED OR RENAMED RECORD\ndashes and dots",
         "CHANGED OR RENAMED SET (dashes and dots)"},
    };
    for (const auto& sample : samples) {
        const ShapeRef box = LegendBox(drawing, page, sample.record, &sample.marking);
        const ShapeRef line =
            box ? ConnectTwoShapes(drawing, legend, box, sample.set + std::string(kLineBreak)) : nullptr;
        if (line) StyleLine(*line, &sample.marking);
    }
}

}  // namespace norvelis
