#pragma once

#include <string>
#include <vector>

#include "drawing/render/scene.h"
#include "paper/footer.h"
#include "paper/sheet_plan.h"

class QPainter;

namespace norvelis::drawing::sheets {

/// The pages of a drawing cut into sheets, counted from 1 over all pages. Nothing is painted before it is
/// asked for, so the number of sheets costs next to nothing.
class SheetJob {
  public:
    /// The pages must outlive it. RuntimeFailure 5 as PlanSheets.
    SheetJob(std::vector<const render::Scene*> pages, const paper::SheetChoice& choice, paper::Footer footer);

    int Count() const;
    const paper::SheetPlan& PlanOf(int sheet) const;
    /// Of the page that the sheet is of.
    const paper::Sheet& SheetOf(int sheet) const;

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

    std::vector<const render::Scene*> pages_;
    std::vector<paper::SheetPlan> plans_;  ///< One for each page.
    paper::Footer footer_;
    bool cropMarks_, hasFooter_;
};

}  // namespace norvelis::drawing::sheets
