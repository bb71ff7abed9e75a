#include "ui/skins/program_icon.h"

#include <QPainter>
#include <QPixmap>

namespace norvelis::ui {

namespace {

/// On a square of 64 units.
void PaintIcon(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient blue(0, 0, 0, 64);
    blue.setColorAt(0, QColor(0x2C, 0x7D, 0xD2));
    blue.setColorAt(1, QColor(0x17, 0x54, 0x99));
    painter.setPen(Qt::NoPen);
    painter.setBrush(blue);
    painter.drawRoundedRect(QRectF(2, 2, 60, 60), 13, 13);

    painter.setPen(QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawLine(QPointF(32, 28), QPointF(32, 35));
    painter.drawPolyline(QPolygonF{QPointF(20, 42), QPointF(20, 35), QPointF(44, 35), QPointF(44, 42)});
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(20, 13, 24, 15), 2.5, 2.5);
    painter.drawRoundedRect(QRectF(10, 41, 20, 12), 2.5, 2.5);
    painter.drawRoundedRect(QRectF(34, 41, 20, 12), 2.5, 2.5);
    painter.setPen(QPen(QColor(0x1F, 0x6F, 0xC4), 1.6));
    painter.drawLine(QPointF(22, 20.5), QPointF(42, 20.5));
}

}  // namespace

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.scale(size / 64.0, size / 64.0);
        PaintIcon(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace norvelis::ui
