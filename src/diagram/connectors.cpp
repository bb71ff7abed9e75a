#include "diagram/connectors.h"

#include "base/name_key.h"
#include "base/text.h"
#include "diagram/common.h"
#include "diagram/difference_marks.h"
#include "diagram/meaning.h"
#include "diagram/page_references.h"
#include "diagram/record_shapes.h"
#include "diagram/shape_text.h"
#include "dictionary/sets.h"

namespace norvelis {

namespace {

bool Glue(engine::Shape& line, const engine::CellAddress& end, engine::Shape& box) {
    const CellRef cell = line.CellsSRC(end);
    const CellRef pin = cell ? box.CellsSRC(engine::kPinX) : nullptr;
    return pin && cell->GlueTo(pin);
}

const Marking* MarkingOf(const DrawingState& drawing, const Recordset& set) {
    if (!drawing.marks) return nullptr;
    return drawing.marks->OfSet(set.Text("Set"), set.Text("recordname"), set.Text("next_step"));
}

}  // namespace

void ConnectAllShapes(DrawingState& drawing, engine::Page& page) {
    ShowText(drawing, "Connecting shapes..");
    // One read of the whole table: with a file for each parent it is walked many times.
    auto row = dictionary::Sets(drawing.store);
    for (; !row.Eof(); row.MoveNext()) {
        if (!IsOfDrawnSchema(drawing, row)) continue;
        const std::string ownerName = row.Text("recordname"), memberName = row.Text("next_step");
        const ShapeRef owner = ShapeOfRecord(drawing, page, ownerName);
        if (!owner) continue;
        drawing.app.host.Yield();
        const ShapeRef member = ShapeOfRecord(drawing, page, memberName);
        if (!member) continue;
        if (IsOnAnotherPage(drawing, ownerName) && IsOnAnotherPage(drawing, memberName)) continue;
        const Marking* marking = MarkingOf(drawing, row);
        std::string label(Trim(row.Text("Set")));
        drawing.drawnSets.insert(NameKey(label));
        if (marking) label += " (" + marking->words + ")";
        label.append(kLineBreak).append(Trim(row.Text("connection")));
        const ShapeRef line = ConnectTwoShapes(drawing, owner, member, label);
        if (!line) continue;
        drawing.drawnLines.push_back({line->ID(), row.Text("set"), ownerName, memberName});
        if (drawing.marks) StyleLine(*line, marking);
    }
}

ShapeRef ConnectTwoShapes(DrawingState& drawing, const ShapeRef& from, const ShapeRef& to,
                          const std::string& label) {
    // The stencil finds its master in any letter case; the master reports its name as "Dynamic connector".
    const ShapeRef line = DropShape(drawing.reportOnce, from->ContainingPage(), kFlowchartStencil,
                                    "Dynamic Connector", 0.5, 0.5);
    if (!line) return nullptr;
    const bool written = Glue(*line, engine::kBeginX, *from) && Glue(*line, engine::kEndX, *to) &&
                         line->SetText(Trim(label).empty() ? from->Name() + "-" + to->Name() : label) &&
                         SetFormula(line->Cells("Char.Size"), kSixPoints) &&
                         ColorLine(drawing, *line, from->Name());
    if (!written) return nullptr;
    line->SendToBack();
    return line;
}

void FormatConnectorLabels(engine::Page& page) {
    const auto shapes = page.Shapes();
    const int count = shapes ? shapes->Count() : 0;
    for (int i = 1; i <= count; ++i) {
        const ShapeRef shape = shapes->Item(i);
        const auto master = shape ? shape->Master() : nullptr;
        if (master && master->Name() == "Dynamic connector") TextFieldAndFormattingDemo(*shape);
    }
}

}  // namespace norvelis
