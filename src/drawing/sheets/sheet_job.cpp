#include "drawing/sheets/sheet_job.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include "drawing/render/ink.h"
#include "drawing/render/paint.h"

namespace norvelis::drawing::sheets {

namespace {

using paper::Sheet;
using paper::SheetPlan;
using paper::Size;
using render::kUnitsPerInch;
using render::Scene;

constexpr double kUnitsPerMillimetre = kUnitsPerInch / 25.4;
constexpr double kMarkGap = 1, kMarkLength = 5, kMarkWidth = 0.15;
constexpr double kFooterBaseline = 7;  // Above the paper's edge.
constexpr int kFooterLetters = 80;     // Tenths of a point.

Size SizeOf(const Scene& scene) {
    return {scene.size.width() / kUnitsPerMillimetre, scene.size.height() / kUnitsPerMillimetre};
}

QRectF Units(const Rect& rect) {
    return {QPointF(rect.x0, rect.y0) * kUnitsPerMillimetre, QPointF(rect.x1, rect.y1) * kUnitsPerMillimetre};
}

void PaintDrawing(QPainter& painter, const Scene& scene, const SheetPlan& plan, const Sheet& sheet) {
    const QRectF area = Units(plan.area);
    const QPointF origin = QPointF(sheet.origin.x, sheet.origin.y) * kUnitsPerMillimetre;
    const QRectF page(QPointF(), scene.size);
    const QRectF exposed = QRectF((area.topLeft() - origin) / plan.scale, area.size() / plan.scale) & page;
    painter.save();
    painter.setClipRect(area);
    painter.translate(origin);
    painter.scale(plan.scale, plan.scale);
    painter.setClipRect(page, Qt::IntersectClip);
    if (!exposed.isEmpty()) PaintScene(painter, scene, exposed);
    painter.restore();
}

/// Short strokes outside the area, at both ends of each line along which the sheet is to be cut.
void PaintCropMarks(QPainter& painter, const SheetPlan& plan, const Sheet& sheet) {
    const Rect& area = plan.area;
    painter.setPen(QPen(Qt::black, kMarkWidth * kUnitsPerMillimetre, Qt::SolidLine, Qt::FlatCap));
    const auto stroke = [&](double x0, double y0, double x1, double y1) {
        painter.drawLine(QPointF(x0, y0) * kUnitsPerMillimetre, QPointF(x1, y1) * kUnitsPerMillimetre);
    };
    for (const double x : {sheet.cut.x0, sheet.cut.x1}) {
        stroke(x, area.y0 - kMarkGap, x, area.y0 - kMarkGap - kMarkLength);
        stroke(x, area.y1 + kMarkGap, x, area.y1 + kMarkGap + kMarkLength);
    }
    for (const double y : {sheet.cut.y0, sheet.cut.y1}) {
        stroke(area.x0 - kMarkGap, y, area.x0 - kMarkGap - kMarkLength, y);
        stroke(area.x1 + kMarkGap, y, area.x1 + kMarkGap + kMarkLength, y);
    }
}

QPageSize PageSizeOf(const Size& paper) {
    return QPageSize(QSizeF(paper.width, paper.height), QPageSize::Millimeter, {}, QPageSize::ExactMatch);
}

}  // namespace

SheetJob::SheetJob(std::vector<const Scene*> pages, const paper::SheetChoice& choice, paper::Footer footer)
    : pages_(std::move(pages)),
      footer_(std::move(footer)),
      cropMarks_(choice.cropMarks),
      hasFooter_(choice.footer) {
    for (const Scene* page : pages_) plans_.push_back(PlanSheets(SizeOf(*page), choice));
}

int SheetJob::Count() const {
    std::size_t count = 0;
    for (const SheetPlan& plan : plans_) count += plan.sheets.size();
    return static_cast<int>(count);
}

SheetJob::Place SheetJob::PlaceOf(int sheet) const {
    std::size_t page = 0, left = static_cast<std::size_t>(sheet) - 1;
    for (; left >= plans_[page].sheets.size(); ++page) left -= plans_[page].sheets.size();
    return {page, left};
}

const SheetPlan& SheetJob::PlanOf(int sheet) const {
    return plans_[PlaceOf(sheet).page];
}

const Sheet& SheetJob::SheetOf(int sheet) const {
    const auto [page, sheetOfPage] = PlaceOf(sheet);
    return plans_[page].sheets[sheetOfPage];
}

void SheetJob::Paint(QPainter& painter, int sheet) const {
    const auto [page, sheetOfPage] = PlaceOf(sheet);
    const SheetPlan& plan = plans_[page];
    PaintDrawing(painter, *pages_[page], plan, plan.sheets[sheetOfPage]);
    if (cropMarks_ && plan.sheets.size() > 1) PaintCropMarks(painter, plan, plan.sheets[sheetOfPage]);
    if (hasFooter_) PaintFooter(painter, sheet);
}

void SheetJob::PaintFooter(QPainter& painter, int sheet) const {
    const SheetPlan& plan = PlanOf(sheet);
    const Sheet& place = SheetOf(sheet);
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(kFooterLetters);
    const QFontMetricsF metrics(font);
    const QString number = QString::fromStdString(paper::SheetWords(sheet, Count(), place.row, place.column));
    const QPointF left = QPointF(plan.area.x0, plan.paper.height - kFooterBaseline) * kUnitsPerMillimetre;
    const double width = plan.area.Width() * kUnitsPerMillimetre;
    const double numberWidth = metrics.horizontalAdvance(number);
    const QString drawing = metrics.elidedText(QString::fromStdString(paper::DrawingWords(footer_)),
                                               Qt::ElideMiddle, width - numberWidth - 2 * metrics.height());
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(left, drawing);
    painter.drawText(left + QPointF(width - numberWidth, 0), number);
}

std::string SheetJob::Pdf(const std::vector<int>& sheets) const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(static_cast<int>(kUnitsPerInch));
    writer.setCreator("Norvelis");
    writer.setTitle(QString::fromStdString(footer_.name));
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    for (const int sheet : sheets) {
        writer.setPageSize(PageSizeOf(PlanOf(sheet).paper));
        if (painter.isActive())
            writer.newPage();
        else
            painter.begin(&writer);
        painter.resetTransform();
        Paint(painter, sheet);
    }
    painter.end();
    return bytes.toStdString();
}

}  // namespace norvelis::drawing::sheets
