#pragma once

#include <QString>

#include "core/host.h"
#include "viewer/report_lines.h"

class QPainter;
class QPrinter;

namespace norvelis::ui {

/// Lines of a report as they are put on paper: in a fixed pitch that lets the lines of reports (up to 133
/// columns) fit, longer ones on several rows, with a new page where the report has one and a heading on each.
class PrintedLines {
  public:
    /// `last` is included.
    PrintedLines(const viewer::ReportLines& report, std::uint64_t first, std::uint64_t last, QString title);

    /// The host's event loop has turns; Canceled leaves nothing printed and no file.
    int PageCount(Host& host, QPrinter& printer) const { return Run(host, printer, nullptr); }
    /// The same; false when the printer refuses.
    bool Print(Host& host, QPrinter& printer) const;

  private:
    /// Pages; without a painter they are only counted. 0 when the printer refuses.
    int Run(Host& host, QPrinter& printer, QPainter* painter) const;

    const viewer::ReportLines& report_;
    std::uint64_t first_, last_;
    QString title_;
};

}  // namespace norvelis::ui
