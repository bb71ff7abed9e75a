#include "drawing/stencils/build.h"

#include <fmt/format.h>

#include <cmath>

#include "base/failure.h"
#include "drawing/formula/recalculation.h"

namespace norvelis::drawing::stencils {

namespace {

constexpr int kFirstShapeId =
    5;  // As programs of this format count in masters; "Sheet.5" in the definitions.

/// The same name always has the same ID, so that stencils made again are the same files.
std::string IdOf(const std::string& name) {
    std::uint64_t half[2];
    for (std::uint64_t& hash : half) {
        hash = 0xCBF29CE484222325 + static_cast<std::uint64_t>(&hash - half);
        for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    }
    return fmt::format("{{{:08X}-{:04X}-{:04X}-{:04X}-{:012X}}}", half[0] >> 32, half[0] >> 16 & 0xFFFF,
                       half[0] & 0xFFFF, half[1] >> 48, half[1] & 0xFFFFFFFFFFFF);
}

/// Puts masters together shape by shape, each cell through the recalculation, so that all values are right.
class MasterBuilder {
  public:
    MasterBuilder(Document& document, Recalculation& recalculation)
        : document_(document), recalculation_(recalculation) {}

    Master& Add(const MasterDefinition& definition) {
        Master& master = document_.AddMaster(definition.name);
        master.prompt = definition.prompt;
        master.matchByName = true;
        master.uniqueId = IdOf("master " + definition.name);
        master.baseId = IdOf("base " + definition.name);
        StatePage(document_, master.sheet, kLetterWidth, kLetterHeight);
        Shape& top = AddShape(master, definition.shape, nullptr);
        for (const ShapeDefinition& part : definition.shape.parts) AddShape(master, part, &top);
        // Formulas may name any shape of the group.
        State(master, top, definition.shape);
        for (std::size_t i = 0; i < definition.shape.parts.size(); ++i)
            State(master, *top.shapes[i], definition.shape.parts[i]);
        return master;
    }

  private:
    Shape& AddShape(Master& master, const ShapeDefinition& definition, Shape* group) {
        auto made = std::make_unique<Shape>();
        if (!group) made->id = kFirstShapeId;
        made->name = made->nameU = definition.name;
        made->kind = definition.parts.empty() ? ShapeKind::Shape : ShapeKind::Group;
        made->lineStyle = made->fillStyle = made->textStyle = document_.FindStyle("Normal");
        if (!definition.text.empty()) made->text = TextRuns{{definition.text}};
        return master.Add(std::move(made), group);
    }

    void State(Master& master, Shape& shape, const ShapeDefinition& definition) {
        for (const CellDefinition& cell : definition.cells) {
            const CellRef ref = ParseCellName(document_.names, cell.name);
            if (ref.cell == Name::None)
                throw RuntimeFailure(FailureNumber::InvalidCall, "there is no cell " + cell.name);
            Put(master, shape, ref, cell);
        }
        for (const PropertyDefinition& property : definition.properties) {
            Row& row = shape.At(Name::Property).At(RowKey::Named(document_.names.Intern(property.row)));
            row.cells.SetText(Name::Label, property.label).SetText(Name::Value, "");
        }
        int index = 0;
        for (const GeometryDefinition& geometry : definition.geometry)
            AddGeometry(master, shape, geometry, index++);
    }

    void AddGeometry(Master& master, Shape& shape, const GeometryDefinition& definition, int index) {
        Section& section = shape.At(Name::Geometry, index);
        section.cells.Set(Name::NoFill, definition.noFill ? 1 : 0)
            .Set(Name::NoLine, definition.noLine ? 1 : 0);
        int number = 0;
        for (const RowDefinition& row : definition.rows) {
            const RowKey key = RowKey::Number(++number);
            shape.At(Name::Geometry, index).At(key).type = document_.names.Find(row.type);
            for (const CellDefinition& cell : row.cells)
                Put(master, shape, CellRef(Name::Geometry, index, key, document_.names.Find(cell.name)),
                    cell);
        }
    }

    void Put(Master& master, Shape& shape, const CellRef& ref, const CellDefinition& cell) {
        if (ref.section == Name::Character && ref.cell == Name::Font) {  // By its name.
            shape.LocalAt(ref).SetNumber(document_.FontIndex(cell.formula));
            recalculation_.Changed(master, shape, ref);
            return;
        }
        if (!recalculation_.SetFormula(master, shape, ref, cell.formula))
            throw RuntimeFailure(FailureNumber::InvalidCall, cell.name + " can not be " + cell.formula);
    }

    Document& document_;
    Recalculation& recalculation_;
};

/// A master that does not depend on its page gets a page of its own size, which shows it whole.
void FitPage(Recalculation& recalculation, Master& master) {
    Shape& shape = *master.shapes.front();
    if (FormulaOf(shape, Name::Width).find("ThePage") != std::string_view::npos) return;
    master.sheet.cells.Set(Name::PageWidth, std::abs(Number(shape, Name::Width)));
    master.sheet.cells.Set(Name::PageHeight, std::abs(Number(shape, Name::Height)));
    // A line is placed by its ends; a guarded pin stays where they put it.
    recalculation.SetValue(master, shape, Name::PinX, Value::Of(Number(shape, Name::LocPinX)));
    recalculation.SetValue(master, shape, Name::PinY, Value::Of(Number(shape, Name::LocPinY)));
}

}  // namespace

std::unique_ptr<Document> BuildStencil(FontLibrary& fonts, const StencilDefinition& definition) {
    auto document = std::make_unique<Document>(DocumentKind::Stencil);
    document->title = definition.title;
    document->creator = "Norvelis";
    AddStandardStyles(*document);
    Recalculation recalculation(*document, fonts);
    MasterBuilder builder(*document, recalculation);
    for (const MasterDefinition& each : definition.masters) {
        Master& master = builder.Add(each);
        recalculation.Settle();
        FitPage(recalculation, master);
        recalculation.Settle();
    }
    return document;
}

std::unique_ptr<Document> BuildTemplate() {
    auto document = std::make_unique<Document>(DocumentKind::Template);
    document->creator = "Norvelis";
    AddStandardStyles(*document);
    Page& page = document->AddPage("Page-1");
    StatePage(*document, page.sheet, kLetterWidth, kLetterHeight);
    return document;
}

}  // namespace norvelis::drawing::stencils
