#include "diagram/record_shapes.h"

#include <array>
#include <utility>
#include <vector>

#include "base/text.h"
#include "browse/next_step.h"
#include "diagram/color.h"
#include "diagram/common.h"
#include "diagram/difference_marks.h"
#include "diagram/meaning.h"
#include "diagram/shape_text.h"
#include "dictionary/records.h"

namespace norvelis {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 4> strStepShapes = {{
    {"PROCESS", "Process"},
    {"DECISION", "Decision"},
    {"END", "Terminator"},
    {"ANNOTATION", "ANNOTATION"},
}};

constexpr double kDropSquare = 10;  // inches

/// What a store may say of a record in its optional columns: where it leads, a remark, how long it takes.
void WriteOptionalColumns(const DrawingState& drawing, engine::Shape& shape, const Recordset& row) {
    if (const std::string address = row.Text("Hyperlink"); !address.empty()) {
        if (const auto link = shape.AddHyperlink()) {
            link->SetAddress(address);
            const std::string name = row.Text("Hyperlinkname");
            if (!name.empty()) link->SetDescription(name);
        }
    }
    SetFormulaU(shape.CellsSRC(engine::kComment), QuoteFormula(row.Text("comments")));
    if (shape.CellExistsU("Prop.Duration", 0)) {
        const std::string duration = row.Text("duration");
        const CellRef cell = IsNumeric(duration) ? shape.CellsU("Prop.Duration") : nullptr;
        if (cell) cell->SetResult(engine::Unit::Number, Val(duration));
    }
    if (shape.CellExistsU("Prop.Resources", 0)) {
        SetFormulaU(shape.CellsU("Prop.Resources"), QuoteFormula(drawing.gOwnerColor));
    }
}

std::vector<std::string> MembersOf(DrawingState& drawing, const std::string& recordName) {
    const auto row = dictionary::RecordIn(drawing.store, drawing.gDrawSchema, recordName);
    return row.Eof() ? std::vector<std::string>() : SplitNextStep(row.Text("next_step"));
}

}  // namespace

ShapeRef DropAtRandom(DrawingState& drawing, const PageRef& page, const std::string& master) {
    const double x = drawing.app.random.Rnd() * kDropSquare;
    const double y = drawing.app.random.Rnd() * kDropSquare;
    return DropShape(drawing.reportOnce, page, kFlowchartStencil, master, x, y);
}

void RememberShape(DrawingState& drawing, const std::string& name, engine::Shape& shape) {
    if (const int id = shape.ID(); id > 0) drawing.gShapeIds.Add(name, id);
}

std::string GetStepMaster(std::string_view step) {
    const std::string word = UpperCase(step);
    for (const auto& [name, master] : strStepShapes) {
        if (name == word) return std::string(master);
    }
    return std::string(strStepShapes.front().second);
}

void DrawRecordTree(DrawingState& drawing, const PageRef& page, const std::string& recordName) {
    // The names still to come, the next one last: a stack of its own, for a chain of sets can be long.
    std::vector<std::string> names{recordName};
    while (!names.empty()) {
        const std::string name(Trim(names.back()));
        names.pop_back();
        if (drawing.colorsEachBox) drawing.gOwnerColor = PickLightColor(drawing.app.random);
        CreateRecordShape(drawing, page, drawing.gDrawSchema, name);
        if (!drawing.walked.insert(UpperCase(name)).second) continue;
        const std::vector<std::string> members = MembersOf(drawing, name);
        names.insert(names.end(), members.rbegin(), members.rend());
        drawing.app.host.Yield();
    }
}

bool CreateRecordShape(DrawingState& drawing, const PageRef& page, const std::string& schema,
                       const std::string& recordName) {
    if (drawing.gDrawnShapes.Contains(recordName)) return false;
    const auto row = dictionary::RecordIn(drawing.store, schema, recordName);
    if (row.Eof()) return true;
    const std::string name(Trim(row.Text("RecordName")));
    if (drawing.gDrawnShapes.Contains(name)) return false;  // asked for in other letters
    if (!name.empty()) {
        const ShapeRef shape = DropAtRandom(drawing, page, GetStepMaster("PROCESS"));
        if (!shape) return false;
        RememberShape(drawing, name, *shape);
        const auto orBlank = [&row](std::string_view column) { return row.Value(column).value_or(" "); };
        drawing.box = {row.Text("Recordname"), orBlank("tableid"), orBlank("rectype"), orBlank("reclen"),
                       orBlank("recmode"),     orBlank("reckey"),  orBlank("dn"),      orBlank("areaname")};
        const Marking* marking = drawing.marks ? drawing.marks->OfRecord(name) : nullptr;
        if (marking) drawing.box.gBoxRecordName += "\n" + marking->words;
        FormatShapeText(drawing.box, *shape);
        shape->SetName(name);
        drawing.gDrawnShapes.Add(name);
        ++drawing.drawnRecords;
        if (drawing.options.meaning != BoxMeaning::None) {
            ShowMeaning(drawing, *shape, row);
        } else if (drawing.colored) {
            drawing.gFillFormula = drawing.gOwnerColor;
            if (!drawing.gFillFormula.empty()) {
                SetFormulaU(shape->CellsSRC(engine::kFillForegnd), drawing.gFillFormula);
            }
        }
        if (drawing.marks) StyleBox(*shape, marking);
        SetFormula(shape->Cells("Char.Size"), kSixPoints);
        SizeToText(*shape);
        WriteOptionalColumns(drawing, *shape, row);
        drawing.app.host.Yield();
    }
    CreateIndexShapes(drawing, page, recordName);
    return true;
}

void SizeToText(engine::Shape& box) {
    SetFormula(box.Cells("Height"), "Guard(TextHeight(TheText, Width))");
    SetFormula(box.Cells("width"), "Guard(TextWidth(TheText))");
}

ShapeRef ShapeOfRecord(const DrawingState& drawing, engine::Page& page, std::string_view recordName) {
    const auto id = drawing.gShapeIds.Find(Trim(recordName));
    const auto shapes = id ? page.Shapes() : nullptr;
    return shapes ? shapes->ItemFromID(*id) : nullptr;
}

bool CreateIndexShapes(DrawingState& drawing, const PageRef& page, const std::string& recordName) {
    if (!drawing.storeHasIndexRows) return true;
    auto row = dictionary::IndexBoxesOf(drawing.store, recordName);
    for (; !row.Eof(); row.MoveNext()) {
        const std::string name(Trim(row.Text("RecordName")));
        if (name.empty() || !IsOfDrawnSchema(drawing, row)) continue;
        const ShapeRef shape = DropAtRandom(drawing, page, GetStepMaster("ANNOTATION"));
        if (!shape) return false;
        RememberShape(drawing, name, *shape);
        shape->SetText(row.Text("Information"));
        shape->SetName(name);
        SetFormula(shape->Cells("Char.Size"), kSixPoints);
        WriteOptionalColumns(drawing, *shape, row);
    }
    return true;
}

}  // namespace norvelis
