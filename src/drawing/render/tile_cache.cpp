#include "drawing/render/tile_cache.h"

#include <QPainter>
#include <cmath>

#include "drawing/render/paint.h"

namespace norvelis::drawing::render {

void TileCache::Show(const Scene* scene) {
    scene_ = scene;
    tiles_.clear();
    painted_ = 0;
}

QImage TileCache::PaintTile(QPoint tile) const {
    const int pixels = static_cast<int>(std::ceil(kTileSide * ratio_));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio_);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const QPointF corner(tile.x() * kTileSide, tile.y() * kTileSide);
    painter.translate(-corner);
    painter.scale(scale_, scale_);
    const QRectF page(QPointF(), scene_->size);
    painter.fillRect(page, Qt::white);
    PaintScene(painter, *scene_, QRectF(corner / scale_, QSizeF(kTileSide, kTileSide) / scale_));
    return image;
}

void TileCache::Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio) {
    if (!scene_ || scale <= 0 || view.isEmpty()) return;
    if (scale != scale_ || devicePixelRatio != ratio_) tiles_.clear();
    scale_ = scale, ratio_ = devicePixelRatio;
    const auto tileAt = [](int pixel) {
        return static_cast<int>(std::floor(static_cast<double>(pixel) / kTileSide));
    };
    for (int y = tileAt(view.top()); y <= tileAt(view.bottom()); ++y) {
        for (int x = tileAt(view.left()); x <= tileAt(view.right()); ++x) {
            auto tile = tiles_.constFind({x, y});
            if (tile == tiles_.constEnd()) {
                if (tiles_.size() >= kMostTiles) tiles_.clear();
                tile = tiles_.insert({x, y}, PaintTile({x, y}));
                ++painted_;
            }
            painter.drawImage(QPoint(x * kTileSide, y * kTileSide) - view.topLeft(), *tile);
        }
    }
}

}  // namespace norvelis::drawing::render
