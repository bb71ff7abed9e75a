#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/formula/value.h"
#include "drawing/model/document.h"

namespace norvelis::drawing {

/// A cell that a formula names: of its own sheet, of the page, or of the shape with an ID.
struct Reference {
    enum class Where { Own, Page, Sheet } where = Where::Own;
    int sheet = 0;
    CellRef cell;
    bool operator==(const Reference&) const = default;
};

/// Where an expression gets its cells and its text from.
class FormulaSource {
  public:
    virtual ~FormulaSource() = default;
    virtual std::optional<Value> CellValue(const Reference& reference) = 0;
    virtual double TextWidth(double mostWidth) = 0;
    virtual double TextHeight(double mostWidth) = 0;
    /// The coordinate of a glued end, for the cell that is being evaluated.
    virtual std::optional<double> WalkGlue() = 0;
};

/// A parsed formula. Numbers with units (in, ft, pt, mm, cm, m, deg, rad, DL, DT, DA), + - * / ^ & and
/// comparisons, cell references, strings, and the usual functions, in any letter case. Functions that it does
/// not know make it opaque: it keeps its references, is written as it came, and has no value.
class Expression {
  public:
    /// Null when the text is no formula or names a cell that does not exist.
    static std::shared_ptr<const Expression> Parse(const NamePool& names, std::string_view text);
    ~Expression();

    const std::vector<Reference>& References() const { return references_; }
    /// The formula in its universal spelling: functions in capitals, cells in their own spelling, no blanks.
    const std::string& Text() const { return text_; }
    bool IsOpaque() const { return opaque_; }
    /// A number with an optional unit, a string or a truth value; nothing else has to be asked for its value.
    bool IsConstant() const;
    /// Unit of a constant number; None when it has none.
    Name ConstantUnit() const;
    /// How deep the steps of its evaluation are nested at most.
    int Depth() const;
    /// Nothing for an opaque expression, a missing cell, a division by zero or a number beyond all measure.
    std::optional<Value> Evaluate(FormulaSource& source) const;

  private:
    struct Node;
    class Parser;
    class Evaluation;
    Expression();

    std::unique_ptr<Node> root_;
    std::vector<Reference> references_;
    std::string text_;
    bool opaque_ = false;
};

}  // namespace norvelis::drawing
