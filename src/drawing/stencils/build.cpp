#include "drawing/stencils/build.h"

#include "core/failure.h"
#include "drawing/formula/expression.h"
#include "drawing/formula/recalculation.h"

namespace norvelis::drawing::stencils {

namespace {

constexpr double kLetterWidth = 11, kLetterHeight = 8.5;
constexpr int kFirstShapeId = 5;  // As programs of this format count in masters; "Sheet.5" in the definitions.

/// Writes a formula down; its value comes with the recalculation of the whole.
void Put(const Document& document, Cell& cell, const std::string& name, const std::string& formula) {
    if (!Expression::Parse(document.names, formula))
        throw RuntimeFailure(FailureNumber::InvalidCall, name + " can not be " + formula);
    cell.formula = formula;
}

void Put(const Document& document, Shape& shape, const CellDefinition& definition) {
    const CellRef ref = ParseCellName(document.names, definition.name);
    if (ref.cell == Name::None) throw RuntimeFailure(FailureNumber::InvalidCall, "there is no cell " + definition.name);
    Put(document, shape.LocalAt(ref), definition.name, definition.formula);
}

void AddGeometry(Document& document, Shape& shape, const GeometryDefinition& definition, int index) {
    Section& section = shape.At(Name::Geometry, index);
    section.cells.Set(Name::NoFill, definition.noFill ? 1 : 0).Set(Name::NoLine, definition.noLine ? 1 : 0);
    for (const RowDefinition& rowDefinition : definition.rows) {
        Row& row = section.At(RowKey::Number(section.NextIndex(1)));
        row.type = document.names.Find(rowDefinition.type);
        for (const CellDefinition& cell : rowDefinition.cells)
            Put(document, row.cells.At(document.names.Find(cell.name)), cell.name, cell.formula);
    }
}

std::unique_ptr<Shape> MakeShape(Document& document, const ShapeDefinition& definition) {
    auto shape = std::make_unique<Shape>();
    shape->kind = definition.parts.empty() ? ShapeKind::Shape : ShapeKind::Group;
    shape->name = shape->nameU = definition.name;
    shape->lineStyle = shape->fillStyle = shape->textStyle = document.FindStyle("Normal");
    for (const CellDefinition& cell : definition.cells) Put(document, *shape, cell);
    for (const PropertyDefinition& property : definition.properties) {
        Row& row = shape->At(Name::Property).At(RowKey::Named(document.names.Intern(property.row)));
        row.cells.SetText(Name::Label, property.label).SetText(Name::Value, "");
    }
    int index = 0;
    for (const GeometryDefinition& geometry : definition.geometry) AddGeometry(document, *shape, geometry, index++);
    if (!definition.text.empty()) shape->text = TextRuns{{definition.text}};
    return shape;
}

Master& AddMaster(Document& document, const MasterDefinition& definition) {
    Master& master = document.AddMaster(definition.name);
    master.prompt = definition.prompt;
    master.matchByName = true;
    master.sheet.cells.Set(Name::PageWidth, kLetterWidth).Set(Name::PageHeight, kLetterHeight);
    auto top = MakeShape(document, definition.shape);
    top->id = kFirstShapeId;
    Shape& group = master.Add(std::move(top));
    for (const ShapeDefinition& part : definition.shape.parts) master.Add(MakeShape(document, part), &group);
    return master;
}

/// A master that does not depend on its page gets a page of its own size, with itself in the middle.
void FitPage(Master& master) {
    Shape& shape = *master.shapes.front();
    if (FormulaOf(shape, Name::Width).find("ThePage") != std::string_view::npos) return;
    const bool line = Find(shape, Name::EndX) && FormulaOf(shape, Name::PinX).find("EndX") != std::string_view::npos;
    const double width = Number(shape, Name::Width), height = std::abs(Number(shape, Name::Height));
    master.sheet.cells.Set(Name::PageWidth, width).Set(Name::PageHeight, height);
    if (line) return;
    shape.cells.Set(Name::PinX, Number(shape, Name::LocPinX)).Set(Name::PinY, Number(shape, Name::LocPinY));
}

}  // namespace

std::unique_ptr<Document> BuildStencil(FontLibrary& fonts, const StencilDefinition& definition) {
    auto document = std::make_unique<Document>(DocumentKind::Stencil);
    document->title = definition.title;
    document->creator = "Norvelis";
    AddStandardStyles(*document);
    for (const MasterDefinition& master : definition.masters) AddMaster(*document, master);
    Recalculation recalculation(*document, fonts);
    for (const auto& master : document->masters) recalculation.AllChanged(*master);
    recalculation.Settle();
    for (const auto& master : document->masters) {
        FitPage(*master);
        recalculation.AllChanged(*master);
    }
    recalculation.Settle();
    return document;
}

std::unique_ptr<Document> BuildTemplate() {
    auto document = std::make_unique<Document>(DocumentKind::Template);
    document->title = "Basic Flowchart";
    document->creator = "Norvelis";
    AddStandardStyles(*document);
    Page& page = document->AddPage("Page-1");
    page.sheet.cells.Set(Name::PageWidth, kLetterWidth).Set(Name::PageHeight, kLetterHeight);
    return document;
}

}  // namespace norvelis::drawing::stencils
