#pragma once

#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/formula/formula_tables.h"
#include "drawing/formula/glue_points.h"
#include "drawing/text/fonts.h"

namespace norvelis::drawing {

/// Keeps the values of a document's cells in step with their formulas. A change marks the cells that depend
/// on it, in any number of steps, as stale; each is evaluated once, when it is asked for or at Settle. All
/// changes of cells that formulas may read go through here.
///
/// A shape works by its own formulas and by those of the shape in the master that it inherits from; the
/// latter are indexed once for each master.
class Recalculation {
  public:
    Recalculation(Document& document, FontLibrary& fonts);
    ~Recalculation();
    Recalculation(const Recalculation&) = delete;
    Recalculation& operator=(const Recalculation&) = delete;

    /// Makes a shape's formulas known, sub-shapes included; for shapes that did not come with the document.
    void Added(Canvas& canvas, Shape& shape);
    /// The same for an instance that was just dropped: what its master takes from the page is taken from this
    /// one.
    void Dropped(Canvas& canvas, Shape& shape);
    /// Cells of the shape were removed directly: it goes by its master's formulas where it has none of its
    /// own.
    void Renewed(Canvas& canvas, Shape& shape);
    /// Cells of a master were written directly: its instances look at it again.
    void MasterChanged(Master& master);

    /// Sets a formula, with or without "=" in front. False, and nothing changed, when it is no formula, names
    /// what is not there, or would make the cell depend on itself.
    bool SetFormula(Canvas& canvas, Shape& shape, const CellRef& ref, std::string_view formula);
    /// Sets a value in place of the formula. False, and nothing changed, when the formula is guarded or the
    /// value is no finite number or lies beyond every page.
    bool SetValue(Canvas& canvas, Shape& shape, const CellRef& ref, const Value& value);
    /// The shape's text or its formats are different now.
    void TextChanged(Canvas& canvas, Shape& shape) { Changed(canvas, shape, Name::TheText); }
    /// A value was written directly into the model.
    void Changed(Canvas& canvas, Shape& shape, const CellRef& ref);

    /// The value in force, brought up to date first.
    Value Get(Canvas& canvas, Shape& shape, const CellRef& ref);
    double Number(Canvas& canvas, Shape& shape, const CellRef& ref) { return Get(canvas, shape, ref).number; }
    /// Brings all stale cells up to date.
    void Settle();
    /// How often a formula was evaluated so far.
    long Evaluations() const { return evaluations_; }

  private:
    class Source;
    struct Place {
        Canvas* canvas;
        Shape* shape;
        CellRef ref;
    };
    /// A local formula, or one of a master, that names a cell of the page or of another shape.
    struct Watch {
        CellRef watched;
        Shape* shape;
        CellRef dependent;
    };

    void MarkReadersOfThePage(Canvas& canvas, Shape& shape);
    const Expression* FormulaInForce(const Shape& shape, const CellRef& ref);
    void RememberLocal(Canvas& canvas, Shape& shape, const CellRef& ref, ExpressionPtr expression);
    void ForgetLocal(Canvas& canvas, Shape& shape, const CellRef& ref);
    void WatchOthers(Canvas& canvas, Shape& shape, const CellRef& ref, const Expression& expression);
    /// The shape that a reference of a formula of `shape` leads to; null when it is not there.
    Shape* Resolve(Canvas& canvas, Shape& shape, const CellRef& ref, const Reference& reference) const;
    bool Reaches(Canvas& canvas, Shape& shape, const CellRef& ref, const Expression& expression);
    void PutValue(Canvas& canvas, Shape& shape, const CellRef& ref, const Value& value, Name unit);
    void MarkStale(const Place& place, std::vector<Place>& todo);
    void MarkDependents(const Place& place, std::vector<Place>& todo);
    void MarkAll(Canvas& canvas, Shape& shape, std::vector<Place>& todo);
    void Evaluate(const Place& place);
    /// The text is measured by its formats as they are.
    void SettleFormats(Canvas& canvas, Shape& shape);
    /// The place of the box that a trigger of a line names.
    std::optional<glue::Block> GluedBlock(Canvas& canvas, Shape& line, Name trigger);
    std::optional<double> WalkGlue(Canvas& canvas, Shape& line, Name cell);

    Document& document_;
    FontLibrary& fonts_;
    FormulaTables tables_;
    std::unordered_map<const Shape*, std::vector<CellFormula>> locals_;
    std::map<std::pair<Canvas*, int>, std::vector<Watch>>
        watches_;  // By the watched sheet's ID, the page's is 0.
    std::vector<Place> stale_;
    int depth_ = 0;  // Steps of the evaluations in progress.
    long evaluations_ = 0;
};

}  // namespace norvelis::drawing
