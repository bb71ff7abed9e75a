#include "ui/controls/drawing_map.h"

#include <QMouseEvent>
#include <QPainter>

namespace norvelis::ui {

namespace {

constexpr QSize kLargest(240, 140);

}  // namespace

DrawingMap::DrawingMap(QWidget* parent) : QWidget(parent) {
    setObjectName("DrawingMap");
    setAccessibleName("Map of the drawing");
    setToolTip("The whole drawing; a click or a drag moves the view (M hides the map)");
    setCursor(Qt::CrossCursor);
    setAttribute(Qt::WA_NoMousePropagation);
    hide();
}

void DrawingMap::SetPage(const QImage& overview, QSizeF page) {
    overview_ = overview;
    picture_ = {};
    page_ = page;
    resize(sizeHint());
    resizeEvent(nullptr);
}

void DrawingMap::Mark(const QRectF& seen, const QList<QPointF>& places) {
    if (seen == seen_ && places == places_) return;
    seen_ = seen;
    places_ = places;
    update();
}

QSize DrawingMap::sizeHint() const {
    const QSize size = page_.scaled(kLargest, Qt::KeepAspectRatio).toSize();
    return size.expandedTo({24, 24});
}

void DrawingMap::resizeEvent(QResizeEvent*) {
    if (overview_.isNull()) return;
    picture_ =
        overview_.scaled(size() * devicePixelRatioF(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    picture_.setDevicePixelRatio(devicePixelRatioF());
    update();
}

void DrawingMap::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(QPoint(), picture_);
    const double scale = Scale();
    const QRectF seen(seen_.topLeft() * scale, seen_.size() * scale);
    QRegion outside(rect());
    outside -= seen.toAlignedRect();
    for (const QRect& part : outside) painter.fillRect(part, QColor(90, 100, 115, 70));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(214, 60, 0));
    for (const QPointF& place : places_)
        painter.drawRect(QRectF(place * scale - QPointF(1.5, 1.5), QSizeF(3, 3)));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(seen.intersected(rect()).adjusted(1, 1, -1, -1));
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void DrawingMap::Point(QPointF pixel, bool dragged) {
    emit Pointed(pixel / Scale(), dragged);
}

void DrawingMap::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Point(event->position(), false);
}

void DrawingMap::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) Point(event->position(), true);
}

}  // namespace norvelis::ui
