#include "ui/screens/viewers/print_lines.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <algorithm>

#include "base/text.h"

namespace norvelis::ui {

namespace {

constexpr std::size_t kWidest = 133;  // Columns; of longer lines the rest is left out.
constexpr std::size_t kLinesAtOnce = 500;
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

QString PrintedText(const std::string& line) {
    QString text = QString::fromStdString(ToUtf8(line));
    text.remove('\f');
    return text;
}

}  // namespace

PrintedLines::PrintedLines(const viewer::ReportLines& report, std::uint64_t first, std::uint64_t last,
                           QString title)
    : report_(report), first_(first), last_(last), title_(std::move(title)) {}

int PrintedLines::Run(QPrinter& printer, QPainter* painter) const {
    const Letters letters = LettersFor(printer);
    if (painter) painter->setFont(letters.font);
    int pages = 0, row = letters.rows;
    for (std::uint64_t line = first_; line <= last_;) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(kLinesAtOnce, last_ - line + 1));
        const auto lines = report_.Read(line, count, kWidest);
        if (lines.empty()) break;
        for (const viewer::Line& each : lines) {
            if (row >= letters.rows || (each.startsPage && row > 0)) {
                if (painter && pages > 0 && !printer.newPage()) return 0;
                row = 0;
                ++pages;
                if (painter) PaintHeading(*painter, letters, title_, pages);
            }
            if (painter) painter->drawText(letters.Baseline(row + kHeadingLines), PrintedText(each.text));
            ++row;
        }
        line += lines.size();
    }
    return pages;
}

bool PrintedLines::Print(QPrinter& printer) const {
    QPainter painter;
    printer.setDocName(title_);
    return painter.begin(&printer) && Run(printer, &painter) > 0 && painter.end();
}

}  // namespace norvelis::ui
