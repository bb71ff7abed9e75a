#pragma once

#include <vector>

#include "base/geometry.h"
#include "paper/sheet_choice.h"

// Which sheets a drawing takes and what of it is where on each: arithmetic alone. Lengths are millimetres; on
// a sheet y grows downwards from its upper edge.
namespace norvelis::paper {

struct Size {
    double width, height;
};

/// What is left free on every sheet: printers do not reach the edges, and crop marks and footer are there.
inline constexpr double kMargin = 12, kFooterMargin = 18;

struct Sheet {
    int row, column;  ///< From 1.
    /// Of the drawing's upper left corner; outside the sheet's area for all but the first row and column.
    Point origin;
    /// Where this sheet is to be cut. Sheets cut so and laid edge to edge show the drawing once and whole;
    /// between here and the end of the area neighbors show the same.
    Rect cut;
};

struct SheetPlan {
    Size paper;    ///< Turned.
    Rect area;     ///< Of the paper: what the drawing may cover.
    double scale;  ///< Of life size.
    int columns, rows;
    std::vector<Sheet> sheets;  ///< Row by row.
};

/// The sheets for a drawing of this size. RuntimeFailure 5 when they would be more than can be meant.
SheetPlan PlanSheets(Size drawing, const SheetChoice& choice);

}  // namespace norvelis::paper
