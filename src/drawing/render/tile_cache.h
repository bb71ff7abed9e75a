#pragma once

#include <QHash>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QThreadPool>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "drawing/render/scene.h"

class QPainter;

namespace norvelis::drawing::render {

/// A scene's picture in square tiles, painted in a thread of its own, so that a view over it never waits: it
/// moves over what is painted already, and a blurred picture is in the place of what is not. Belongs to one
/// view; nobody else uses the scene meanwhile, which must outlive it.
class TileCache {
  public:
    explicit TileCache(const Scene& scene);
    ~TileCache();

    /// What is called whenever tiles that a view waits for are ready, in the painting thread.
    void OnReady(std::function<void()> ready) { ready_ = std::move(ready); }

    /// Paints the tiles of `view`, a rectangle in pixels of the page at `scale` (pixels to the scene unit),
    /// in the calling thread; nothing may be shown yet.
    void Prepare(const QRect& view, double scale, double devicePixelRatio = 1);

    /// Shows the view so that its corner falls on the painter's origin, and has missing tiles painted.
    /// Whether all of it is as it should be.
    bool Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio = 1);

    /// The whole page, its longer side kOverviewSide pixels.
    const QImage& Overview() const { return overview_; }
    static constexpr int kOverviewSide = 1200;

    int PaintedTiles() const { return painted_; }  ///< For measuring.

  private:
    /// The tiles of one scale.
    struct Level {
        double scale = 0, ratio = 1;
        QHash<QPoint, QImage> tiles;
        bool Is(double ofScale, double ofRatio) const { return scale == ofScale && ratio == ofRatio; }
    };

    void Turn(double scale, double ratio);
    void DropFarTiles(const QRect& view);
    void PaintStandIn(QPainter& painter, const QRect& view) const;
    void PaintWanted();
    QImage PaintTile(QPoint tile, double scale, double ratio) const;

    static constexpr int kTileSide = 256, kMostTiles = 300;
    const Scene& scene_;
    QImage overview_;
    std::function<void()> ready_;
    std::mutex mutex_;  ///< Over all below.
    Level level_, former_;
    std::vector<QPoint> wanted_;     ///< Tiles of the view that is on show.
    std::optional<QPoint> current_;  ///< The tile of this scale that is being painted.
    bool painting_ = false;
    int painted_ = 0;
    QThreadPool thread_;
};

}  // namespace norvelis::drawing::render
