#include "drawing/render/paint.h"

#include <QPaintEngine>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

namespace norvelis::drawing::render {

namespace {

constexpr double kLegiblePixels = 2.5;  ///< Below this height a letter is a grey speck.

void PaintMarks(QPainter& painter, const Figure& figure) {
    const Mark* before = nullptr;
    for (const Mark& mark : figure.marks) {
        if (mark.clipped && before) {
            painter.save();
            painter.setClipPath(before->path, Qt::IntersectClip);
        }
        painter.setPen(mark.line);
        painter.setBrush(mark.fill);
        painter.drawPath(mark.path);
        if (mark.clipped && before)
            painter.restore();
        else
            before = &mark;
    }
}

void PaintPicture(QPainter& painter, const Figure& figure) {
    if (figure.picture.isNull()) return;
    painter.save();
    painter.setTransform(figure.picturePlace, true);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(0, 0, 1, 1), figure.picture);
    painter.restore();
}

void PaintText(QPainter& painter, const TextPicture& text, double scale, bool paper) {
    if (text.fragments.empty()) return;
    painter.save();
    painter.setTransform(text.place, true);
    for (const Fragment& fragment : text.fragments) {
        const double pixels = fragment.font.pixelSize() * scale;
        if (!paper && pixels < kLegiblePixels) {
            QColor grey = fragment.color;
            grey.setAlphaF(grey.alphaF() * 0.35F);
            const double height = fragment.font.pixelSize() * 0.5;
            painter.fillRect(QRectF(fragment.start.x(), fragment.start.y() - height, fragment.width, height),
                             grey);
            continue;
        }
        painter.setFont(fragment.font);
        painter.setPen(fragment.color);
        painter.drawText(fragment.start, fragment.text);
    }
    painter.restore();
}

bool IsPaper(const QPainter& painter) {
    const int type = painter.paintEngine() ? painter.paintEngine()->type() : 0;
    return type == QPaintEngine::Pdf || type == QPaintEngine::Picture;
}

}  // namespace

void PaintScene(QPainter& painter, const Scene& scene, const QRectF& exposed) {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const double scale = std::sqrt(std::abs(painter.worldTransform().determinant()));
    const bool paper = IsPaper(painter);
    if (scene.foreign) scene.foreign->picture->render(&painter, QRectF(QPointF(), scene.size));
    for (const Figure& figure : scene.figures) {
        if (!figure.bounds.intersects(exposed)) continue;
        PaintMarks(painter, figure);
        PaintPicture(painter, figure);
        PaintText(painter, figure.text, scale, paper);
    }
}

void PaintScene(QPainter& painter, const Scene& scene) {
    PaintScene(painter, scene, QRectF(QPointF(-1e9, -1e9), QPointF(1e9, 1e9)));
}

QImage Picture(const Scene& scene, double pixelsPerInch, int longest) {
    double scale = pixelsPerInch / kUnitsPerInch;
    scale = std::min(scale, longest / std::max({scene.size.width(), scene.size.height(), 1.0}));
    const auto pixels = [scale](double units) {
        return std::max(1, static_cast<int>(std::ceil(units * scale - 1e-6)));
    };
    QImage image(pixels(scene.size.width()), pixels(scene.size.height()),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    PaintScene(painter, scene);
    return image;
}

}  // namespace norvelis::drawing::render
