#pragma once

#include <QString>

#include "viewer/report_lines.h"

class QPainter;
class QPrinter;

namespace norvelis::ui {

/// Lines of a report as they are put on paper: in a fixed pitch that lets the longest of them (up to 132
/// columns) fit, with a new page where the report has one and a heading on each.
class PrintedLines {
  public:
    /// `last` is included.
    PrintedLines(const viewer::ReportLines& report, std::uint64_t first, std::uint64_t last, QString title);

    int PageCount(QPrinter& printer) const { return Run(printer, nullptr); }
    /// False when the printer refuses.
    bool Print(QPrinter& printer) const;

  private:
    /// Pages; without a painter they are only counted. 0 when the printer refuses.
    int Run(QPrinter& printer, QPainter* painter) const;

    const viewer::ReportLines& report_;
    std::uint64_t first_, last_;
    QString title_;
};

}  // namespace norvelis::ui
