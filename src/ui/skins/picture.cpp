#include "ui/skins/picture.h"

#include <QFile>
#include <QImage>
#include <QPixmap>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "base/paths.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

struct Picture::Data {
    QSize size;
    QString path;                         // of the plain file, or
    std::function<void(QPainter&)> draw;  // how it is drawn
    std::map<int, QPixmap> variants;      // by hundredths of a device pixel to the point

    QPixmap For(double ratio) {
        QPixmap& variant = variants[static_cast<int>(std::lround(ratio * 100))];
        if (variant.isNull()) variant = draw ? Draw(ratio) : Load(ratio);
        return variant;
    }
    QPixmap Draw(double ratio) const {
        QPixmap drawn((QSizeF(size) * ratio).toSize());
        drawn.fill(Qt::transparent);
        drawn.setDevicePixelRatio(ratio);
        QPainter painter(&drawn);
        draw(painter);
        return drawn;
    }
    // The sharpest variant that is needed; the plain file when a skin has no others.
    QPixmap Load(double ratio) const {
        QString file = path;
        for (const double scale : kPictureScales) {
            const QString scaled = ScaledFile(path, scale);
            if (QFile::exists(scaled)) file = scaled;
            if (scale >= ratio) break;
        }
        QPixmap loaded(file);
        if (loaded.isNull()) loaded.load(path);
        loaded.setDevicePixelRatio(static_cast<double>(loaded.width()) / size.width());
        return loaded;
    }
};

Picture Picture::FromFile(const QString& path) {
    const QString found = QString::fromStdString(Resolve(path.toStdString()));
    const QPixmap plain(found);
    if (plain.isNull()) return {};
    Picture picture;
    picture.data_ = std::make_shared<Data>(Data{plain.size(), found, {}, {{100, plain}}});
    return picture;
}

Picture Picture::Drawn(QSize size, std::function<void(QPainter&)> draw) {
    Picture picture;
    picture.data_ = std::make_shared<Data>(Data{size, {}, std::move(draw), {}});
    return picture;
}

QSize Picture::Size() const {
    return data_ ? data_->size : QSize();
}

QColor Picture::At(QPoint place) const {
    if (!data_) return {};
    const QImage image = data_->For(1).toImage();
    return image.valid(place) ? image.pixelColor(place) : QColor();
}

void Picture::Paint(QPainter& painter, const QRectF& target) const {
    PaintPart(painter, target, QRectF(QPointF(), Size()));
}

void Picture::PaintPart(QPainter& painter, const QRectF& target, const QRectF& part) const {
    if (!data_) return;
    const QPixmap pixmap = data_->For(painter.device()->devicePixelRatioF());
    const double ratio = pixmap.devicePixelRatio();
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(target, pixmap, QRectF(part.topLeft() * ratio, part.size() * ratio));
    painter.restore();
}

void Picture::PaintCovering(QPainter& painter, const QRectF& target) const {
    if (!data_) return;
    const QSizeF size = data_->size;
    const double scale = std::max(target.width() / size.width(), target.height() / size.height());
    const QSizeF seen(target.width() / scale, target.height() / scale);
    PaintPart(painter, target,
              QRectF(QPointF(size.width() - seen.width(), size.height() - seen.height()), seen));
}

namespace {

/// One direction of nine patches: where they begin and end in the picture and in the target.
struct Patches {
    std::array<double, 3> fromStart, fromEnd;
    std::array<double, 4> to;

    Patches(double size, double start, double length, double before, double behind) {
        before = std::min(before, length / 2);
        behind = std::min(behind, length - before);
        fromStart = {0, before, size - behind};
        fromEnd = {before, std::min(size, length) - behind, size};
        to = {start, start + before, start + length - behind, start + length};
    }
};

}  // namespace

void Picture::PaintPatches(QPainter& painter, const QRectF& target, const QMarginsF& margins) const {
    if (!data_) return;
    const double display = painter.device()->devicePixelRatioF();
    const QPixmap pixmap = data_->For(display);
    const double ratio = pixmap.devicePixelRatio();
    const QSizeF size = data_->size;
    const Patches across(size.width(), target.left(), target.width(), margins.left(), margins.right());
    const Patches down(size.height(), target.top(), target.height(), margins.top(), margins.bottom());
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, ratio != display);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const QRectF to(QPointF(across.to[column], down.to[row]),
                            QPointF(across.to[column + 1], down.to[row + 1]));
            const QRectF from(QPointF(across.fromStart[column], down.fromStart[row]) * ratio,
                              QPointF(across.fromEnd[column], down.fromEnd[row]) * ratio);
            if (to.width() > 0 && to.height() > 0) painter.drawPixmap(to, pixmap, from);
        }
    }
    painter.restore();
}

void PaintEdge(QPainter& painter, const QRectF& area, const QColor& color, double width) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    const double half = width / 2;
    painter.drawRect(area.adjusted(half, half, -half, -half));
    painter.restore();
}

}  // namespace norvelis::ui
