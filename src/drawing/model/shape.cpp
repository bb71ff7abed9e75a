#include "drawing/model/shape.h"

#include <algorithm>

#include "drawing/model/defaults.h"

namespace norvelis::drawing {

namespace {

constexpr int kDeepest = 64;  // Bases and styles of a well-formed file; whatever is deeper came from a cycle.

bool Between(Name name, Name first, Name last) {
    return name >= first && name <= last;
}

using StyleMember = const StyleSheet* Sheet::*;

/// Which of a sheet's three styles a cell falls back on; null for cells that styles do not hold.
StyleMember StyleFor(const CellRef& ref) {
    if (ref.section == Name::Character || ref.section == Name::Paragraph || ref.section == Name::Tabs) {
        return &Sheet::textStyle;
    }
    if (ref.section != Name::None) return nullptr;
    if (Between(ref.cell, Name::LineWeight, Name::CompoundType)) return &Sheet::lineStyle;
    if (Between(ref.cell, Name::FillForegnd, Name::ShapeShdwShow)) return &Sheet::fillStyle;
    if (Between(ref.cell, Name::LeftMargin, Name::TextDirection)) return &Sheet::textStyle;
    return nullptr;
}

/// In styles the formats of text are in row 0.
CellRef InStyle(CellRef ref) {
    if (ref.section != Name::None && ref.row != CellRef::kSectionCell) ref.row = RowKey::Number(0);
    return ref;
}

const Cell* FindInStyle(const StyleSheet* style, StyleMember member, const CellRef& ref) {
    for (int depth = 0; style && depth < kDeepest; ++depth, style = style->*member) {
        if (const Cell* cell = style->FindLocal(ref)) return cell;
    }
    return nullptr;
}

}  // namespace

bool IsCoordinate(const CellRef& ref) {
    if (ref.section == Name::Geometry || ref.section == Name::Control)
        return Between(ref.cell, Name::X, Name::E);
    return ref.section == Name::None && (Between(ref.cell, Name::PinX, Name::EndY) ||
                                         Between(ref.cell, Name::PageWidth, Name::PageHeight) ||
                                         Between(ref.cell, Name::TxtPinX, Name::TxtLocPinY));
}

const Cell* Sheet::FindLocal(const CellRef& ref) const {
    if (ref.section == Name::None) return cells.Find(ref.cell);
    const Section* section = Find(ref.section, ref.index);
    if (!section) return nullptr;
    if (ref.row == CellRef::kSectionCell) return section->cells.Find(ref.cell);
    const Row* row = section->Find(ref.row);
    return row ? row->cells.Find(ref.cell) : nullptr;
}

Cell& Sheet::LocalAt(const CellRef& ref) {
    if (ref.section == Name::None) return cells.At(ref.cell);
    Section& section = At(ref.section, ref.index);
    if (ref.row == CellRef::kSectionCell) return section.cells.At(ref.cell);
    return section.At(ref.row).cells.At(ref.cell);
}

const Master* MasterOf(const Shape& shape) {
    for (const Shape* at = &shape; at; at = at->parent) {
        if (at->master) return at->master;
    }
    return nullptr;
}

const Cell* Find(const Sheet& sheet, const CellRef& ref) {
    if (const Cell* cell = sheet.FindLocal(ref)) return cell;
    const StyleMember member = StyleFor(ref);
    return member ? FindInStyle(sheet.*member, member, InStyle(ref)) : nullptr;
}

const Cell* Find(const Shape& shape, const CellRef& ref) {
    int depth = 0;
    for (const Shape* at = &shape; at && depth < kDeepest; at = at->base, ++depth) {
        if (const Cell* cell = at->FindLocal(ref)) return cell;
    }
    const StyleMember member = StyleFor(ref);
    if (!member) return nullptr;
    depth = 0;
    for (const Shape* at = &shape; at && depth < kDeepest; at = at->base, ++depth) {
        if (at->*member) return FindInStyle(at->*member, member, InStyle(ref));
    }
    return nullptr;
}

double Number(const Shape& shape, const CellRef& ref) {
    const Cell* cell = Find(shape, ref);
    return cell ? cell->value : DefaultNumber(ref.cell);
}

std::string TextValue(const Shape& shape, const CellRef& ref) {
    const Cell* cell = Find(shape, ref);
    return cell && cell->isText ? cell->text : std::string();
}

std::string_view FormulaOf(const Shape& shape, const CellRef& ref) {
    int depth = 0;
    for (const Shape* at = &shape; at && depth < kDeepest; at = at->base, ++depth) {
        const Cell* cell = at->FindLocal(ref);
        if (cell && !cell->inherited) return cell->formula;
    }
    return {};
}

const TextRuns& TextOf(const Shape& shape) {
    static const TextRuns none;
    int depth = 0;
    for (const Shape* at = &shape; at && depth < kDeepest; at = at->base, ++depth) {
        if (at->text) return *at->text;
    }
    return none;
}

std::string PlainText(const TextRuns& runs) {
    std::string text;
    for (const auto& run : runs) text += run.text;
    return text;
}

namespace {

void Overlay(CellList& under, const CellList& over) {
    for (const auto& cell : over) under.At(cell.name) = cell;
}

void AddInForce(const Shape* shape, Name name, int index, int depth, Section& result) {
    if (!shape || depth >= kDeepest) return;
    AddInForce(shape->base, name, index, depth + 1, result);
    const Section* own = shape->Find(name, index);
    if (!own) return;
    if (own->deleted) {
        result.cells = {};
        result.rows.clear();
        return;
    }
    Overlay(result.cells, own->cells);
    if (result.rows.empty()) {
        result.rows = own->rows;
        return;
    }
    for (const auto& row : own->rows) {
        Row& merged = result.At(row.key);
        merged.deleted = row.deleted;
        if (row.type != Name::None) merged.type = row.type;
        Overlay(merged.cells, row.cells);
    }
}

}  // namespace

Section SectionOf(const Shape& shape, Name section, int index) {
    Section result;
    result.name = section;
    result.index = index;
    AddInForce(&shape, section, index, 0, result);
    std::erase_if(result.rows, [](const Row& row) { return row.deleted; });
    std::stable_sort(result.rows.begin(), result.rows.end(), [](const Row& a, const Row& b) {
        if (a.key.IsNamed() || b.key.IsNamed()) return a.key.IsNamed() < b.key.IsNamed();
        return a.key.Index() < b.key.Index();
    });
    return result;
}

bool HasOwnGeometry(const Shape& shape) {
    const Section* section = shape.Find(Name::Geometry);
    return section && std::any_of(section->rows.begin(), section->rows.end(), [](const Row& row) {
               return std::any_of(row.cells.begin(), row.cells.end(),
                                  [](const Cell& cell) { return !cell.inherited; });
           });
}

std::vector<int> GeometryIndexes(const Shape& shape) {
    std::vector<int> indexes;
    int depth = 0;
    for (const Shape* at = &shape; at && depth < kDeepest; at = at->base, ++depth) {
        for (const auto& section : at->sections) {
            if (section.name == Name::Geometry) indexes.push_back(section.index);
        }
    }
    std::sort(indexes.begin(), indexes.end());
    indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
    return indexes;
}

}  // namespace norvelis::drawing
