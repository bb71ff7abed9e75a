#include "ui/screens/viewers/print_lines.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <QScopeGuard>
#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace norvelis::ui {

namespace {

constexpr std::size_t kWidest = 133;  // Columns; longer lines go on in the next rows.
constexpr std::size_t kMostOfLine = 30 * kWidest;
constexpr std::size_t kLinesAtOnce = 100;
constexpr double kLargestLetters = 10.0 / 72, kSmallestLetters = 5.0 / 72;  // Inches.
constexpr int kHeadingLines = 2;

struct Letters {
    QFont font;
    double height, ascent, width;  ///< Of a line, and of the sheet.
    int rows;                      ///< On a sheet, below the heading.

    QPointF Baseline(int row) const { return {0, row * height + ascent}; }
};

Letters LettersFor(QPrinter& printer) {
    const QRectF sheet = printer.pageRect(QPrinter::DevicePixel);
    const double inch = printer.resolution();
    QFont font;
    font.setFamilies({"Liberation Mono", "DejaVu Sans Mono", "Courier New"});
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(qRound(kLargestLetters * inch));
    const double widest = QFontMetricsF(font, &printer).horizontalAdvance('M') * kWidest;
    const double fitting = kLargestLetters * std::min(1.0, sheet.width() / widest);
    font.setPixelSize(static_cast<int>(std::max(kSmallestLetters, fitting) * inch));
    const QFontMetricsF metrics(font, &printer);
    const int rows = static_cast<int>(sheet.height() / metrics.height()) - kHeadingLines;
    return {font, metrics.height(), metrics.ascent(), sheet.width(), std::max(1, rows)};
}

void PaintHeading(QPainter& painter, const Letters& letters, const QString& title, int page) {
    painter.drawText(letters.Baseline(0), title);
    painter.drawText(QRectF(0, 0, letters.width, letters.height), Qt::AlignRight, QString::number(page));
}

QString PrintedText(std::string_view line) {
    QString text = QString::fromStdString(ToUtf8(line));
    text.remove('\f');
    return text;
}

/// The rows that a line takes; of one that is too long to be printed whole, the last row says so.
std::size_t CountRows(const viewer::Line& line) {
    return std::max<std::size_t>(1, (line.text.size() + kWidest - 1) / kWidest) + !line.isWhole;
}
QString TextOfRow(const viewer::Line& line, std::size_t row) {
    const std::size_t column = row * kWidest;
    if (row > 0 && column >= line.text.size())
        return QString("(columns behind %1 are not printed)").arg(kMostOfLine);
    return PrintedText(std::string_view(line.text).substr(column, kWidest));
}

}  // namespace

PrintedLines::PrintedLines(const viewer::ReportLines& report, std::uint64_t first, std::uint64_t last,
                           QString title)
    : report_(report), first_(first), last_(last), title_(std::move(title)) {}

int PrintedLines::Run(Host& host, QPrinter& printer, QPainter* painter) const {
    const Letters letters = LettersFor(printer);
    if (painter) painter->setFont(letters.font);
    int pages = 0, row = letters.rows;
    for (std::uint64_t line = first_; line <= last_;) {
        host.Yield();
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(kLinesAtOnce, last_ - line + 1));
        const auto lines = report_.Read(line, count, kMostOfLine);
        if (lines.empty()) break;
        for (const viewer::Line& each : lines) {
            if (each.startsPage && row > 0) row = letters.rows;
            for (std::size_t part = 0; part < CountRows(each); ++part) {
                if (row >= letters.rows) {
                    if (painter && pages > 0 && !printer.newPage()) return 0;
                    row = 0;
                    ++pages;
                    if (painter) PaintHeading(*painter, letters, title_, pages);
                }
                if (painter) painter->drawText(letters.Baseline(row + kHeadingLines), TextOfRow(each, part));
                ++row;
            }
        }
        line += lines.size();
    }
    return pages;
}

bool PrintedLines::Print(Host& host, QPrinter& printer) const {
    QPainter painter;
    printer.setDocName(title_);
    if (!painter.begin(&printer)) return false;
    auto giveUp = qScopeGuard([&] {
        printer.abort();
        painter.end();
        if (!printer.outputFileName().isEmpty()) QFile::remove(printer.outputFileName());
    });
    if (Run(host, printer, &painter) == 0) return false;
    giveUp.dismiss();
    return painter.end();
}

}  // namespace norvelis::ui
