#pragma once

#include <string>
#include <vector>

#include "drawing/render/scene.h"
#include "drawing/sheets/sheet_plan.h"

class QPainter;

namespace norvelis::drawing::sheets {

/// What the footer says of the drawing beside the sheet's number; an empty text is left out.
struct Footer {
    std::string name, schemaVersion, reportDate, printDate;
};

/// The pages of a drawing cut into sheets, counted from 1 over all pages. Nothing is painted before it is
/// asked for, so the number of sheets costs next to nothing.
class SheetJob {
  public:
    /// RuntimeFailure 5 as PlanSheets.
    SheetJob(std::vector<render::Scene> pages, const SheetChoice& choice, Footer footer);

    int Count() const;
    const SheetPlan& PlanOf(int sheet) const;

    /// With the painter's origin in the paper's upper left corner and tenths of a point as its unit.
    void Paint(QPainter& painter, int sheet) const;

    /// These sheets as the pages of one PDF file, each of its paper's size.
    std::string Pdf(const std::vector<int>& sheets) const;

  private:
    struct Place {
        std::size_t page, sheetOfPage;
    };
    Place PlaceOf(int sheet) const;
    void PaintFooter(QPainter& painter, int sheet) const;

    std::vector<render::Scene> pages_;
    std::vector<SheetPlan> plans_;  ///< One for each page.
    Footer footer_;
    bool cropMarks_;
};

}  // namespace norvelis::drawing::sheets
