#include "ui/screens/settings/color_palette.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace norvelis::ui {

namespace {

constexpr QSize kWithoutPicture(180, 120);
constexpr int kStep = 6;

}  // namespace

ColorPalette::ColorPalette(const QString& name, const Picture& picture, QWidget* parent)
    : QWidget(parent), picture_(picture) {
    setObjectName(name);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setFixedSize(sizeHint());
    place_ = rect().center();
}

QSize ColorPalette::sizeHint() const {
    return picture_.IsNull() ? kWithoutPicture : picture_.Size();
}

void ColorPalette::Reach(QPoint place, bool pick) {
    place_ = {std::clamp(place.x(), 0, width() - 1), std::clamp(place.y(), 0, height() - 1)};
    update();
    const QColor color = picture_.At(place_);
    if (!color.isValid()) return;
    emit Hovered(color);
    if (pick) emit Picked(color);
}

void ColorPalette::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Reach(event->position().toPoint(), true);
}

void ColorPalette::mouseMoveEvent(QMouseEvent* event) {
    Reach(event->position().toPoint(), event->buttons() & Qt::LeftButton);
}

void ColorPalette::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            return Reach(place_ + QPoint(-kStep, 0), false);
        case Qt::Key_Right:
            return Reach(place_ + QPoint(kStep, 0), false);
        case Qt::Key_Up:
            return Reach(place_ + QPoint(0, -kStep), false);
        case Qt::Key_Down:
            return Reach(place_ + QPoint(0, kStep), false);
        case Qt::Key_Space:
            return Reach(place_, true);
        default:
            QWidget::keyPressEvent(event);
    }
}

void ColorPalette::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (picture_.IsNull()) {
        painter.fillRect(rect(), palette().color(QPalette::Midlight));
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, "The palette's picture is missing");
        return;
    }
    painter.setOpacity(isEnabled() ? 1 : 0.35);
    picture_.Paint(painter, rect());
    PaintEdge(painter, rect(), palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), 1);
    if (!hasFocus()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 3));
    painter.drawEllipse(place_, 4, 4);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.drawEllipse(place_, 4, 4);
}

}  // namespace norvelis::ui
