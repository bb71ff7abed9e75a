#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "drawing/formula/expression.h"

// The formulas that sheets state, and those that shapes share through their masters.
namespace norvelis::drawing {

using ExpressionPtr = std::shared_ptr<const Expression>;

struct CellFormula {
    CellRef ref;
    ExpressionPtr expression;
};

/// The formulas of a master's shape, its own and those it inherits, with an index of who depends on what.
struct FormulaTable {
    std::vector<CellFormula> formulas;                     ///< Sorted by cell.
    std::vector<std::pair<CellRef, CellRef>> dependents;   ///< Own cell -> cells that read it, sorted.
    std::vector<std::pair<Reference, CellRef>> elsewhere;  ///< Cells of other sheets -> cells that read them.

    const Expression* Find(const CellRef& ref) const;
};

class FormulaTables {
  public:
    /// `names` must outlive the tables; it may grow.
    explicit FormulaTables(const NamePool& names) : names_(names) {}

    /// Parsed once however often it is in the document; null when it is no formula.
    ExpressionPtr Parsed(const std::string& formula);
    /// `base` is a shape inside a master.
    const FormulaTable& Of(const Shape& base);
    /// The shape and its parts were changed directly.
    void Forget(const Shape& base);

  private:
    const NamePool& names_;
    std::unordered_map<std::string, ExpressionPtr> parsed_;
    std::unordered_map<const Shape*, std::unique_ptr<FormulaTable>> tables_;
};

/// Visits a sheet's own cells wherever they are.
template <class Visit>
void EachCell(const Sheet& sheet, Visit visit) {
    const auto list = [&visit](const CellList& cells, Name section, int index, RowKey row) {
        for (const auto& cell : cells) visit(CellRef(section, index, row, cell.name), cell);
    };
    list(sheet.cells, Name::None, 0, {});
    for (const auto& section : sheet.sections) {
        list(section.cells, section.name, section.index, CellRef::kSectionCell);
        for (const auto& row : section.rows) list(row.cells, section.name, section.index, row.key);
    }
}

/// Visits those that have formulas of their own.
template <class Visit>
void EachFormula(const Sheet& sheet, Visit visit) {
    EachCell(sheet, [&visit](const CellRef& ref, const Cell& cell) {
        if (!cell.formula.empty() && !cell.inherited) visit(ref, cell.formula);
    });
}

}  // namespace norvelis::drawing
