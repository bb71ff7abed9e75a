#pragma once

#include <QImage>
#include <QRectF>

#include "drawing/render/scene.h"

class QPainter;

namespace norvelis::drawing::render {

/// Paints what of the scene lies in `exposed` (scene units) with the painter's present transform. Text that
/// would come out too small to read is drawn as a grey line, which keeps wide views of large drawings quick.
void PaintScene(QPainter& painter, const Scene& scene, const QRectF& exposed);
void PaintScene(QPainter& painter, const Scene& scene);

/// The page on white paper, `scale` pixels to the inch, no side longer than `longest` pixels.
QImage Picture(const Scene& scene, double pixelsPerInch, int longest = 16000);

}  // namespace norvelis::drawing::render
