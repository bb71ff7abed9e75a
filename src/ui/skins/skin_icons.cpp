#include "ui/skins/skin_icons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <functional>

namespace norvelis::ui {

namespace {

/// Paints on a square of 16 units, whatever the size asked for.
using Paint = std::function<void(QPainter& painter)>;

class DrawnIcon : public QIconEngine {
  public:
    explicit DrawnIcon(Paint paint) : paint_(std::move(paint)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 16.0, rect.height() / 16.0);
        paint_(*painter);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new DrawnIcon(paint_); }

  private:
    Paint paint_;
};

const QColor kFolder(0xE3, 0xB3, 0x4C), kFolderEdge(0xB9, 0x8A, 0x2B);

void PaintFolder(QPainter& painter, bool open) {
    QPainterPath back;
    back.addPolygon(QPolygonF{QPointF(1.5, 13), QPointF(1.5, 3), QPointF(6, 3), QPointF(7.5, 4.8),
                              QPointF(14.5, 4.8), QPointF(14.5, 13)});
    back.closeSubpath();
    painter.setPen(QPen(kFolderEdge, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(open ? kFolder.darker(108) : kFolder);
    painter.drawPath(back);
    if (!open) return;
    painter.setBrush(kFolder.lighter(112));
    painter.drawPolygon(
        QPolygonF{QPointF(1.5, 13), QPointF(3.8, 7.5), QPointF(15.5, 7.5), QPointF(13.8, 13)});
}

void PaintFile(QPainter& painter, const QPalette& palette) {
    painter.setPen(QPen(palette.color(QPalette::Dark), 1));
    painter.setBrush(palette.color(QPalette::Base));
    painter.drawPolygon(QPolygonF{QPointF(3.5, 1.5), QPointF(9.5, 1.5), QPointF(12.5, 4.5),
                                  QPointF(12.5, 14.5), QPointF(3.5, 14.5)});
    for (const double y : {6.5, 9.0, 11.5}) painter.drawLine(QPointF(5.5, y), QPointF(10.5, y));
}

void PaintDrive(QPainter& painter, const QPalette& palette) {
    painter.setPen(QPen(palette.color(QPalette::Dark), 1));
    painter.setBrush(palette.color(QPalette::Midlight));
    painter.drawRoundedRect(QRectF(1.5, 4.5, 13, 7), 1.5, 1.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Highlight));
    painter.drawEllipse(QPointF(12, 8), 1.1, 1.1);
}

void PaintSign(QPainter& painter, const QColor& color, const QString& sign) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(1, 1, 14, 14));
    QFont font = painter.font();
    font.setPixelSize(11);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(0, 0, 16, 16), Qt::AlignCenter, sign);
}

}  // namespace

QIcon SkinIcon(QStyle::StandardPixmap icon, const QPalette& palette) {
    const auto drawn = [](Paint paint) { return QIcon(new DrawnIcon(std::move(paint))); };
    const auto sign = [&](QColor color, const QString& text) {
        return drawn([color, text](QPainter& painter) { PaintSign(painter, color, text); });
    };
    switch (icon) {
        case QStyle::SP_DirIcon:
            return drawn([](QPainter& painter) { PaintFolder(painter, false); });
        case QStyle::SP_DirOpenIcon:
            return drawn([](QPainter& painter) { PaintFolder(painter, true); });
        case QStyle::SP_FileIcon:
            return drawn([palette](QPainter& painter) { PaintFile(painter, palette); });
        case QStyle::SP_DriveHDIcon:
            return drawn([palette](QPainter& painter) { PaintDrive(painter, palette); });
        case QStyle::SP_MessageBoxInformation:
            return sign(palette.color(QPalette::Highlight), "i");
        case QStyle::SP_MessageBoxQuestion:
            return sign(palette.color(QPalette::Highlight), "?");
        case QStyle::SP_MessageBoxWarning:
            return sign(QColor(0xD9, 0x8A, 0x1F), "!");
        case QStyle::SP_MessageBoxCritical:
            return sign(QColor(0xC9, 0x3A, 0x3A), QString::fromUtf8("\u00d7"));
        default:
            return {};
    }
}

}  // namespace norvelis::ui
