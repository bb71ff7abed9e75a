#include "drawing/formula/formula_tables.h"

namespace norvelis::drawing {

const Expression* FormulaTable::Find(const CellRef& ref) const {
    const auto found = std::lower_bound(formulas.begin(), formulas.end(), ref,
                                        [](const CellFormula& a, const CellRef& b) { return a.ref < b; });
    return found != formulas.end() && found->ref == ref ? found->expression.get() : nullptr;
}

ExpressionPtr FormulaTables::Parsed(const std::string& formula) {
    const auto [found, isNew] = parsed_.try_emplace(formula);
    if (isNew) found->second = Expression::Parse(names_, formula);
    const ExpressionPtr expression = found->second;
    if (!expression) parsed_.erase(found);  // A name that it waits for may come yet.
    return expression;
}

const FormulaTable& FormulaTables::Of(const Shape& base) {
    if (const auto known = tables_.find(&base); known != tables_.end()) return *known->second;
    auto table = std::make_unique<FormulaTable>();
    EachFormula(base, [&](const CellRef& ref, const std::string& formula) {
        if (auto expression = Parsed(formula)) table->formulas.push_back({ref, std::move(expression)});
    });
    if (base.base) {
        for (const auto& inherited : Of(*base.base).formulas) {
            const Cell* own = base.FindLocal(inherited.ref);
            if (!own || own->inherited) table->formulas.push_back(inherited);
        }
    }
    std::sort(table->formulas.begin(), table->formulas.end(),
              [](const CellFormula& a, const CellFormula& b) { return a.ref < b.ref; });
    for (const auto& formula : table->formulas) {
        for (const auto& reference : formula.expression->References()) {
            if (reference.where == Reference::Where::Own) {
                table->dependents.emplace_back(reference.cell, formula.ref);
            } else {
                table->elsewhere.emplace_back(reference, formula.ref);
            }
        }
    }
    std::sort(table->dependents.begin(), table->dependents.end());
    return *tables_.emplace(&base, std::move(table)).first->second;
}

void FormulaTables::Forget(const Shape& base) {
    tables_.erase(&base);
    for (const auto& inner : base.shapes) Forget(*inner);
}

}  // namespace norvelis::drawing
