#include "ui/screens/viewers/report_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "ui/controls/empty_text.h"
#include "viewer/reading_place.h"

namespace norvelis::ui {

using viewer::Place;

namespace {

constexpr std::size_t kMostBytes = 4096;  // Of a line; what is behind them is read when it comes into sight.
constexpr int kAir = 6;                   // Beside the line numbers, and above and below the ruler's.
constexpr QColor kFound(255, 200, 0, 110);

int ToInt(std::uint64_t number) {
    return static_cast<int>(std::min<std::uint64_t>(number, std::numeric_limits<int>::max() / 2));
}

/// One letter for each byte; what is no letter is a dot.
QString Letters(std::string_view bytes) {
    QString text = QString::fromStdString(ToUtf8(bytes));
    for (QChar& letter : text) {
        if (letter < ' ' || (letter >= QChar(0x7F) && letter < QChar(0xA0))) letter = QChar(0xB7);
    }
    return text;
}

bool IsPlain(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar letter) { return letter < QChar(0x7F); });
}

QColor Pale(QColor color) {
    color.setAlpha(90);
    return color;
}

QFont FixedPitch(int pixels) {
    QFont font;
    font.setFamilies({"Liberation Mono", "DejaVu Sans Mono", "Courier New"});
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPixelSize(pixels);
    return font;
}

}  // namespace

ReportView::ReportView(const QString& name, QWidget* parent)
    : QAbstractScrollArea(parent), textSize_(viewer::kUsualText) {
    setObjectName(name);
    setAccessibleName("Report");
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::IBeamCursor);
    SetTextSize(textSize_);
}

void ReportView::Show(const viewer::ReportLines* report) {
    report_ = report;
    widest_ = 0;
    anchor_ = caret_ = {};
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
    LinesChanged();
}

void ReportView::LinesChanged() {
    SetRanges();
    if (shown_.size() <= static_cast<std::size_t>(Rows()) || (report_ && report_->IsComplete())) Fetch();
    viewport()->update();
}

void ReportView::SetTextSize(int pixels) {
    const std::uint64_t first = FirstLine();
    textSize_ = std::clamp(pixels, viewer::kSmallestText, viewer::kLargestText);
    const QFont font = FixedPitch(textSize_);
    viewport()->setFont(font);
    const QFontMetricsF metrics(font);
    columnWidth_ = std::max(1.0, metrics.horizontalAdvance('M'));
    lineHeight_ = std::max(1, qRound(metrics.height()) + 1);
    ascent_ = qRound(metrics.ascent());
    SetRanges();
    ShowFrom(first);
    Fetch();
}

int ReportView::Rows() const {
    return std::max(1, (viewport()->height() - RulerHeight()) / lineHeight_);
}

int ReportView::Columns() const {
    return std::max(1, static_cast<int>((viewport()->width() - NumbersWidth()) / columnWidth_));
}

int ReportView::RulerHeight() const {
    return lineHeight_ + kAir;
}

int ReportView::NumbersWidth() const {
    const auto digits = std::to_string(report_ ? std::max<std::uint64_t>(report_->Count(), 999) : 999).size();
    return qRound(static_cast<double>(digits) * columnWidth_) + 2 * kAir;
}

double ReportView::XOf(std::uint64_t column) const {
    return NumbersWidth() + kAir / 2.0 +
           (static_cast<double>(column) - horizontalScrollBar()->value()) * columnWidth_;
}

void ReportView::SetRanges() {
    const std::uint64_t lines = report_ ? report_->Count() : 0;
    verticalScrollBar()->setRange(0, std::max(0, ToInt(lines) - Rows()));
    verticalScrollBar()->setPageStep(Rows());
    horizontalScrollBar()->setRange(0, std::max(0, ToInt(widest_) + 1 - Columns()));
    horizontalScrollBar()->setPageStep(Columns());
}

void ReportView::Fetch() {
    shown_.clear();
    if (!report_) return;
    const std::uint64_t first = FirstLine();
    const auto left = static_cast<std::uint64_t>(horizontalScrollBar()->value());
    const auto columns = static_cast<std::size_t>(Columns()) + 1;
    for (auto& line : report_->Read(first, static_cast<std::size_t>(Rows()) + 1, kMostBytes)) {
        const std::uint64_t number = first + shown_.size();
        Shown shown{std::move(line.text), 0, line.startsPage};
        widest_ =
            std::max<std::uint64_t>(widest_, line.isWhole ? shown.bytes.size() : report_->LengthOf(number));
        if (!line.isWhole && left + columns > kMostBytes)
            shown = {report_->ReadPart(number, left, columns), left, line.startsPage};
        shown_.push_back(std::move(shown));
    }
    SetRanges();
}

std::uint64_t ReportView::FirstLine() const {
    return static_cast<std::uint64_t>(verticalScrollBar()->value());
}

void ReportView::ShowFrom(std::uint64_t line) {
    verticalScrollBar()->setValue(ToInt(line));
}

void ReportView::scrollContentsBy(int, int) {
    Fetch();
    viewport()->update();
    emit Moved();
}

void ReportView::resizeEvent(QResizeEvent*) {
    SetRanges();
    Fetch();
}

void ReportView::GoTo(Place place, std::uint64_t length) {
    anchor_ = place;
    caret_ = {place.line, place.column + length};
    const int row = ToInt(place.line) - verticalScrollBar()->value();
    if (row < 0 || row >= Rows()) verticalScrollBar()->setValue(ToInt(place.line) - Rows() / 3);
    Fetch();  // The line may be longer than any before it.
    EnsureVisible(caret_);
    EnsureVisible(anchor_);
    viewport()->update();
}

void ReportView::MarkAll(std::optional<viewer::TextSearch> text) {
    search_ = std::move(text);
    viewport()->update();
}

void ReportView::MarkEverything() {
    if (!report_ || report_->Count() == 0) return;
    anchor_ = {};
    caret_ = {report_->Count(), 0};
    viewport()->update();
}

Place ReportView::PlaceAt(QPointF pixel) const {
    const double row = std::floor((pixel.y() - RulerHeight()) / lineHeight_);
    const double line = std::max(0.0, verticalScrollBar()->value() + row);
    const double column = std::max(
        0.0, horizontalScrollBar()->value() + std::round((pixel.x() - NumbersWidth()) / columnWidth_));
    return {static_cast<std::uint64_t>(line), static_cast<std::uint64_t>(column)};
}

void ReportView::MoveCaret(Place to, bool marks) {
    if (!report_ || report_->Count() == 0) return;
    to.line = std::min(to.line, report_->Count() - 1);
    to.column = std::min(to.column, report_->LengthOf(to.line));
    caret_ = to;
    if (!marks) anchor_ = to;
    EnsureVisible(to);
    viewport()->update();
}

void ReportView::MoveCaretBy(int lines, bool marks) {
    const auto step = static_cast<std::uint64_t>(std::abs(lines));
    const std::uint64_t line = lines >= 0 ? caret_.line + step : caret_.line - std::min(caret_.line, step);
    MoveCaret({line, caret_.column}, marks);
}

void ReportView::EnsureVisible(Place place) {
    QScrollBar &down = *verticalScrollBar(), &across = *horizontalScrollBar();
    const int line = ToInt(place.line), column = ToInt(place.column);
    down.setValue(std::clamp(down.value(), line - Rows() + 1, line));
    if (column < across.value()) across.setValue(std::max(0, column - 4));
    if (column >= across.value() + Columns()) across.setValue(column - Columns() + 4);
}

void ReportView::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
    if (event->angleDelta().y() != 0) SetTextSize(textSize_ + (event->angleDelta().y() > 0 ? 1 : -1));
    event->accept();
}

void ReportView::keyPressEvent(QKeyEvent* event) {
    const bool marks = event->modifiers().testFlag(Qt::ShiftModifier),
               far = event->modifiers().testFlag(Qt::ControlModifier);
    const std::uint64_t last = report_ && report_->Count() > 0 ? report_->Count() - 1 : 0;
    switch (event->key()) {
        case Qt::Key_Up:
            return MoveCaretBy(-1, marks);
        case Qt::Key_Down:
            return MoveCaretBy(1, marks);
        case Qt::Key_PageUp:
            return MoveCaretBy(-Rows(), marks);
        case Qt::Key_PageDown:
            return MoveCaretBy(Rows(), marks);
        case Qt::Key_Left:
            return MoveCaret({caret_.line, caret_.column - (caret_.column > 0 ? 1 : 0)}, marks);
        case Qt::Key_Right:
            return MoveCaret({caret_.line, caret_.column + 1}, marks);
        case Qt::Key_Home:
            return MoveCaret({far ? 0 : caret_.line, 0}, marks);
        case Qt::Key_End:
            return MoveCaret({far ? last : caret_.line, std::numeric_limits<std::uint64_t>::max()}, marks);
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            if (far) return SetTextSize(textSize_ + 1);
            break;
        case Qt::Key_Minus:
            if (far) return SetTextSize(textSize_ - 1);
            break;
        case Qt::Key_0:
            if (far) return SetTextSize(viewer::kUsualText);
            break;
        default:
            break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

// A press on the numbers marks whole lines.
void ReportView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const Place place = PlaceAt(event->position());
    const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->position().x() >= NumbersWidth()) return MoveCaret(place, extends);
    if (!report_ || place.line >= report_->Count()) return;
    if (!extends) anchor_ = {place.line, 0};
    caret_ = {place.line + 1, 0};
    viewport()->update();
}

void ReportView::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton)) return;
    const Place place = PlaceAt(event->position());
    if (event->position().x() >= NumbersWidth()) return MoveCaret(place, true);
    if (!report_ || place.line >= report_->Count()) return;
    caret_ = {place.line + (place.line >= anchor_.line ? 1 : 0), 0};
    EnsureVisible({place.line, 0});
    viewport()->update();
}

/// Marks a word: what is between blanks.
void ReportView::mouseDoubleClickEvent(QMouseEvent* event) {
    const Place place = PlaceAt(event->position());
    const std::uint64_t row = place.line - FirstLine();
    if (event->button() != Qt::LeftButton || row >= shown_.size()) return;
    const Shown& shown = shown_[row];
    const std::size_t at = place.column - std::min(place.column, shown.start);
    if (at >= shown.bytes.size()) return;
    const std::size_t before = shown.bytes.rfind(' ', at), behind = shown.bytes.find(' ', at);
    anchor_ = {place.line, shown.start + (before == std::string::npos ? 0 : before + 1)};
    caret_ = {place.line, shown.start + std::min(behind, shown.bytes.size())};
    viewport()->update();
}

void ReportView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void ReportView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void ReportView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Base));
    if (!report_) return;
    if (shown_.empty()) {
        PaintEmptyText(painter, *viewport(), "The report is empty");
    }
    painter.setClipRect(viewport()->rect().adjusted(NumbersWidth(), RulerHeight(), 0, 0));
    for (int row = 0; row < static_cast<int>(shown_.size()); ++row) PaintLine(painter, row);
    painter.setClipping(false);
    PaintNumbers(painter);
    PaintRuler(painter);
}

void ReportView::PaintLine(QPainter& painter, int row) const {
    const Shown& shown = shown_[static_cast<std::size_t>(row)];
    const std::uint64_t line = FirstLine() + static_cast<std::uint64_t>(row);
    const int top = RulerHeight() + row * lineHeight_;
    if (shown.startsPage && line > 0) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DashLine));
        painter.drawLine(NumbersWidth(), top, viewport()->width(), top);
    }
    if (search_) {
        for (const std::size_t at : search_->In(shown.bytes))
            painter.fillRect(QRectF(XOf(shown.start + at), top,
                                    static_cast<double>(search_->Length()) * columnWidth_, lineHeight_),
                             kFound);
    }
    PaintMarked(painter, line, top);
    PaintText(painter, shown, top + ascent_);
    if (hasFocus() && caret_.line == line) {
        const double x = XOf(caret_.column);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawLine(QPointF(x, top), QPointF(x, top + lineHeight_ - 1));
    }
}

void ReportView::PaintMarked(QPainter& painter, std::uint64_t line, int top) const {
    const Place from = MarkedFrom(), to = MarkedTo();
    if (from == to || line < from.line || line > to.line) return;
    const double left = line == from.line ? XOf(from.column) : XOf(0);
    const double right = line == to.line ? XOf(to.column) : viewport()->width();
    QColor color = palette().color(QPalette::Highlight);
    color.setAlpha(hasFocus() ? 110 : 70);
    painter.fillRect(QRectF(QPointF(left, top), QPointF(right, top + lineHeight_)), color);
}

// Letters that the font lacks come from another one, of other widths: then each is put into its column.
void ReportView::PaintText(QPainter& painter, const Shown& shown, int baseline) const {
    const auto left = static_cast<std::uint64_t>(horizontalScrollBar()->value());
    const std::size_t skipped =
        std::min<std::uint64_t>(left - std::min(left, shown.start), shown.bytes.size());
    const QString text =
        Letters(std::string_view(shown.bytes).substr(skipped, static_cast<std::size_t>(Columns()) + 1));
    painter.setPen(palette().color(QPalette::Text));
    const double x = XOf(shown.start + skipped);
    if (IsPlain(text)) return painter.drawText(QPointF(x, baseline), text);
    for (int i = 0; i < text.size(); ++i)
        painter.drawText(QPointF(x + i * columnWidth_, baseline), QString(text[i]));
}

// Columns count from 1; each tenth has its number, above its letter.
void ReportView::PaintRuler(QPainter& painter) const {
    const int height = RulerHeight();
    painter.fillRect(0, 0, viewport()->width(), height, palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(0, height - 1, viewport()->width(), height - 1);
    painter.setClipRect(NumbersWidth(), 0, viewport()->width(), height);
    const int first = horizontalScrollBar()->value() + 1;
    for (int column = first; column < first + Columns() + 10; ++column) {
        const double middle = XOf(static_cast<std::uint64_t>(column) - 1) + columnWidth_ / 2;
        const int tick = column % 10 == 0 ? 5 : column % 5 == 0 ? 4 : 2;
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawLine(QPointF(middle, height - 1 - tick), QPointF(middle, height - 2));
        if (column % 10 != 0) continue;
        const QRectF place(middle - 40 * columnWidth_, 0, 40.5 * columnWidth_, lineHeight_);
        painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, QString::number(column));
    }
    painter.setClipping(false);
    const QRectF caret(XOf(caret_.column), 0, columnWidth_, height - 1);
    if (caret.left() >= NumbersWidth()) painter.fillRect(caret, Pale(palette().color(QPalette::Highlight)));
}

void ReportView::PaintNumbers(QPainter& painter) const {
    const int width = NumbersWidth();
    painter.fillRect(0, 0, width, viewport()->height(), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(width - 1, 0, width - 1, viewport()->height());
    const QColor here = Pale(palette().color(QPalette::Highlight));
    for (int row = 0; row < static_cast<int>(shown_.size()); ++row) {
        const std::uint64_t line = FirstLine() + static_cast<std::uint64_t>(row);
        const QRect place(0, RulerHeight() + row * lineHeight_, width - 1, lineHeight_);
        if (line == caret_.line) painter.fillRect(place, here);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(place.adjusted(0, 0, 1 - kAir, 0), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(line + 1));
    }
}

}  // namespace norvelis::ui
