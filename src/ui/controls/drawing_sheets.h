#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "paper/footer.h"
#include "paper/sheet_plan.h"

class QPainter;

namespace norvelis::ui {

/// The pages of a drawing file, ready to be cut into sheets of paper, shown and printed. Sheets count from 1
/// over all pages that were cut.
class DrawingSheets {
  public:
    virtual ~DrawingSheets() = default;

    virtual int PageCount() const = 0;
    virtual QString PageName(int page) const = 0;  ///< Counted from 1.
    /// Cuts these pages, counted from 1. RuntimeFailure 5 with words when that takes too many sheets; they
    /// are then as they were.
    virtual void Cut(const std::vector<int>& pages, const paper::SheetChoice& choice,
                     const paper::Footer& footer) = 0;

    virtual int Count() const = 0;
    virtual const paper::SheetPlan& PlanOf(int sheet) const = 0;
    virtual const paper::Sheet& SheetOf(int sheet) const = 0;
    /// With the painter's origin in the paper's upper left corner and millimetres as its unit.
    virtual void Paint(QPainter& painter, int sheet) const = 0;
    /// These sheets as the pages of one PDF file.
    virtual std::string Pdf(const std::vector<int>& sheets) const = 0;
};

/// What the screens print with.
struct SheetPrinting {
    /// Reads a drawing file; RuntimeFailure with the reason when it can not be shown.
    std::function<std::unique_ptr<DrawingSheets>(const QString& path)> open;
    /// Hands a PDF file to a printer (empty: the default one) and waits a little for what becomes of it.
    /// RuntimeFailure with the reason when the printer refuses. Touches no state.
    std::function<void(const std::string& printer, const std::string& title, const std::string& paper,
                       const std::string& pdf)>
        send;
};

}  // namespace norvelis::ui
