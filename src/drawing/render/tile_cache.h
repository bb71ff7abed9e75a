#pragma once

#include <QHash>
#include <QImage>
#include <QPoint>
#include <QRect>

#include "drawing/render/scene.h"

class QPainter;

namespace norvelis::drawing::render {

/// A scene's picture at one scale, kept in square tiles: a view that moves over the page paints only what
/// newly comes into sight. Belongs to one view; the scene outlives its use here.
class TileCache {
  public:
    /// Forgets what was painted. Null shows nothing.
    void Show(const Scene* scene);

    /// Paints `view`, a rectangle in pixels of the page at `scale` (pixels to the scene unit), so that its
    /// corner falls on the painter's origin. A new scale starts afresh.
    void Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio = 1);

    int PaintedTiles() const { return painted_; }  ///< Since Show, for measuring.

  private:
    QImage PaintTile(QPoint tile) const;

    static constexpr int kTileSide = 256, kMostTiles = 600;
    const Scene* scene_ = nullptr;
    double scale_ = 0, ratio_ = 1;
    QHash<QPoint, QImage> tiles_;
    int painted_ = 0;
};

}  // namespace norvelis::drawing::render
