#include "drawing/render/tile_cache.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/render/paint.h"

namespace norvelis::drawing::render {

namespace {

int TileAt(int pixel, int side) {
    return static_cast<int>(std::floor(static_cast<double>(pixel) / side));
}

/// The tiles that a view touches, as a rectangle of tile numbers.
QRect TilesOf(const QRect& view, int side) {
    return {QPoint(TileAt(view.left(), side), TileAt(view.top(), side)),
            QPoint(TileAt(view.right(), side), TileAt(view.bottom(), side))};
}

}  // namespace

TileCache::TileCache(const Scene& scene)
    : scene_(scene),
      overview_(Picture(
          scene, kOverviewSide * kUnitsPerInch / std::max({scene.size.width(), scene.size.height(), 1.0}))) {
    thread_.setMaxThreadCount(1);
}

TileCache::~TileCache() {
    {
        const std::lock_guard lock(mutex_);
        wanted_.clear();
    }
    thread_.waitForDone();
}

QImage TileCache::PaintTile(QPoint tile, double scale, double ratio) const {
    const int pixels = static_cast<int>(std::ceil(kTileSide * ratio));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const QPointF corner(tile.x() * kTileSide, tile.y() * kTileSide);
    painter.translate(-corner);
    painter.scale(scale, scale);
    const QRectF page(QPointF(), scene_.size);
    painter.fillRect(page, Qt::white);
    PaintScene(painter, scene_, QRectF(corner / scale, QSizeF(kTileSide, kTileSide) / scale));
    return image;
}

/// The scale before this one stays: it is shown for tiles to come, and one often goes back to it.
void TileCache::Turn(double scale, double ratio) {
    if (level_.Is(scale, ratio)) return;
    current_.reset();
    if (former_.Is(scale, ratio)) return std::swap(level_, former_);
    if (!level_.tiles.isEmpty()) former_ = std::move(level_);
    level_ = {scale, ratio, {}};
}

void TileCache::DropFarTiles(const QRect& view) {
    if (level_.tiles.size() <= kMostTiles) return;
    const QRect near = TilesOf(view, kTileSide).adjusted(-2, -2, 2, 2);
    level_.tiles.removeIf([&near](const auto& entry) { return !near.contains(entry.key()); });
}

void TileCache::Prepare(const QRect& view, double scale, double devicePixelRatio) {
    if (scale <= 0 || view.isEmpty()) return;
    Turn(scale, devicePixelRatio);
    const QRect tiles = TilesOf(view, kTileSide);
    for (int y = tiles.top(); y <= tiles.bottom(); ++y) {
        for (int x = tiles.left(); x <= tiles.right(); ++x, ++painted_)
            level_.tiles.insert({x, y}, PaintTile({x, y}, scale, devicePixelRatio));
    }
}

bool TileCache::Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio) {
    if (scale <= 0 || view.isEmpty()) return true;
    const std::lock_guard lock(mutex_);
    Turn(scale, devicePixelRatio);
    DropFarTiles(view);
    std::vector<std::pair<QPoint, QImage>> ready;
    bool isWhole = true;
    wanted_.clear();
    const QRect tiles = TilesOf(view, kTileSide);
    for (int y = tiles.top(); y <= tiles.bottom(); ++y) {
        for (int x = tiles.left(); x <= tiles.right(); ++x) {
            const auto tile = level_.tiles.constFind({x, y});
            if (tile != level_.tiles.constEnd()) {
                ready.emplace_back(tile.key(), *tile);
                continue;
            }
            isWhole = false;
            if (current_ != QPoint(x, y)) wanted_.emplace_back(x, y);
        }
    }
    if (!isWhole) PaintStandIn(painter, view);
    for (const auto& [tile, image] : ready) painter.drawImage(tile * kTileSide - view.topLeft(), image);
    if (!wanted_.empty() && !std::exchange(painting_, true)) thread_.start([this] { PaintWanted(); });
    return isWhole;
}

void TileCache::PaintStandIn(QPainter& painter, const QRect& view) const {
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setClipRect(QRect(QPoint(), view.size()), Qt::IntersectClip);
    const double toOverview = overview_.width() / (scene_.size.width() * level_.scale);
    painter.drawImage(QRectF(QPointF(), view.size()), overview_,
                      QRectF(QPointF(view.topLeft()) * toOverview, QSizeF(view.size()) * toOverview));
    const double larger = former_.scale > 0 ? level_.scale / former_.scale : 0;
    for (auto tile = former_.tiles.cbegin(); tile != former_.tiles.cend(); ++tile) {
        const QRectF place(QPointF(tile.key()) * kTileSide * larger - view.topLeft(),
                           QSizeF(kTileSide, kTileSide) * larger);
        if (place.intersects(QRectF(QPointF(), view.size()))) painter.drawImage(place, *tile);
    }
    painter.restore();
}

void TileCache::PaintWanted() {
    std::unique_lock lock(mutex_);
    while (!wanted_.empty()) {
        const QPoint tile = wanted_.back();
        wanted_.pop_back();
        current_ = tile;
        const double scale = level_.scale, ratio = level_.ratio;
        lock.unlock();
        const QImage image = PaintTile(tile, scale, ratio);
        lock.lock();
        ++painted_;
        if (!level_.Is(scale, ratio)) continue;  // The view has another scale by now.
        current_.reset();
        level_.tiles.insert(tile, image);
        lock.unlock();
        if (ready_) ready_();
        lock.lock();
    }
    painting_ = false;
}

}  // namespace norvelis::drawing::render
