#include "ui/controls/drawing_marks.h"

#include <QPainter>
#include <QRegion>
#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace norvelis::ui {

namespace {

using namespace drawing::walk;

constexpr QColor kHitFill(255, 196, 0, 90), kHitBorder(176, 112, 0), kPresentHit(214, 60, 0);
constexpr int kDimming = 172;            // Of 255: how much of the paper covers what is dimmed.
constexpr std::size_t kManyLines = 200;  // So many are drawn without smoothing.
constexpr double kLeastFrame = 5;        // Pixels: a box of a large page that is seen whole is smaller.

/// The frame around a shape that is pointed out, in pixels.
QRectF Frame(const PageWalk& walk, const PageView& view, int shape, double distance) {
    const QRectF frame =
        view.Pixels(ToQt(walk.Sight(shape))).adjusted(-distance, -distance, distance, distance);
    const double x = std::max(0.0, kLeastFrame - frame.width()) / 2,
                 y = std::max(0.0, kLeastFrame - frame.height()) / 2;
    return frame.adjusted(-x, -y, x, y);
}

void DrawLine(QPainter& painter, const PageWalk& walk, const PageView& view, int line, const QRect& exposed) {
    if (!view.Pixels(ToQt(walk[line].bounds)).adjusted(-2, -2, 2, 2).intersects(exposed)) return;
    QPolygonF pixels;
    for (const Outline& outline : walk[line].outlines) {
        if (outline.width <= 0) continue;  // The ground of the label.
        pixels.clear();
        for (const Point at : outline.points) pixels << view.Origin() + QPointF(at.x, at.y) * view.Scale();
        painter.drawPolyline(pixels);
    }
}

/// One region of many rectangles, in time for hubs of thousands of neighbors.
QRegion UnionOf(std::span<const QRect> rectangles) {
    if (rectangles.empty()) return {};
    if (rectangles.size() == 1) return rectangles.front();
    const std::size_t half = rectangles.size() / 2;
    return UnionOf(rectangles.first(half)) | UnionOf(rectangles.subspan(half));
}

/// A veil over all but what is lit; the lit lines are drawn along in the accent's color.
void PaintLit(QPainter& painter, const PageWalk& walk, const PageView& view, const Surroundings& lit,
              const QColor& accent, const QRect& exposed) {
    const QRect page = view.Pixels(QRectF(QPointF(), view.PageSize())).toAlignedRect() & exposed;
    std::vector<QRect> frames;
    const auto clear = [&](int shape) {
        const QRect frame = Frame(walk, view, shape, 1).toAlignedRect();
        if (frame.intersects(page)) frames.push_back(frame);
    };
    for (const int shape : lit.others) clear(shape);
    for (const int line : lit.lines) {
        if (walk[line].label) clear(line);
    }
    std::ranges::sort(frames, {}, [](const QRect& frame) { return std::pair(frame.top(), frame.left()); });
    const QRegion dimmed = QRegion(page) - UnionOf(frames);
    for (const QRect& part : dimmed) painter.fillRect(part, QColor(255, 255, 255, kDimming));
    painter.save();
    painter.setClipRegion(dimmed, Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing, lit.lines.size() < kManyLines);
    painter.setPen(QPen(accent, 2));
    for (const int line : lit.lines) DrawLine(painter, walk, view, line, exposed);
    painter.restore();
    for (const int shape : lit.others) {
        const QRectF frame = Frame(walk, view, shape, 0);
        if (frame.width() <= kLeastFrame) painter.fillRect(frame, accent);
    }
}

void PaintHits(QPainter& painter, const PageWalk& walk, const Walker& walker, const PageView& view,
               const QRect& exposed) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(kHitBorder);
    painter.setBrush(kHitFill);
    QList<QRectF> frames;
    for (const int shape : walker.FoundShapes()) {
        const QRectF frame = Frame(walk, view, shape, 2);
        if (frame.intersects(exposed)) frames << frame;
    }
    painter.drawRects(frames);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kPresentHit, 3));
    painter.drawRect(Frame(walk, view, walker.PresentHit(), 4));
}

void PaintSelected(QPainter& painter, const PageWalk& walk, const PageView& view, int shape,
                   const QColor& accent, const QRect& exposed) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const QRectF frame = Frame(walk, view, shape, 3);
    if (walk[shape].IsLine()) {
        painter.save();
        if (walk[shape].label) painter.setClipRegion(QRegion(exposed) - frame.toAlignedRect());
        painter.setPen(QPen(accent, 3));
        DrawLine(painter, walk, view, shape, exposed);
        painter.restore();
        if (!walk[shape].label) return;
    }
    painter.setPen(QPen(accent, 2));
    painter.drawRoundedRect(frame, 4, 4);
}

}  // namespace

void PaintMarks(QPainter& painter, const PageWalk& page, const Walker& walker, const PageView& view,
                const QPalette& palette, const QRect& exposed) {
    const QColor accent = palette.color(QPalette::Highlight);
    if (walker.Lit()) PaintLit(painter, page, view, *walker.Lit(), accent, exposed);
    if (walker.PresentHit() != kNone) PaintHits(painter, page, walker, view, exposed);
    if (walker.Selected() != kNone) PaintSelected(painter, page, view, walker.Selected(), accent, exposed);
}

}  // namespace norvelis::ui
