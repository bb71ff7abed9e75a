#pragma once

#include <QPalette>

#include "drawing/walk/walker.h"
#include "ui/controls/page_view.h"

class QPainter;

namespace norvelis::ui {

inline QRectF ToQt(const Rect& rect) {
    return {QPointF(rect.x0, rect.y0), QPointF(rect.x1, rect.y1)};
}

/// Paints over the page what the walker has selected, found and lit up. It is on paper, which is white in
/// every skin, so that only the accent comes from the palette.
void PaintMarks(QPainter& painter, const drawing::walk::PageWalk& page, const drawing::walk::Walker& walker,
                const PageView& view, const QPalette& palette, const QRect& exposed);

}  // namespace norvelis::ui
