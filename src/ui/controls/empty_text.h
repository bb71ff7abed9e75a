#pragma once

#include <QPainter>
#include <QWidget>

namespace norvelis::ui {

/// In the middle of a control that has nothing to show: what to do next.
inline void PaintEmptyText(QPainter& painter, const QWidget& control, const QString& text) {
    constexpr int kMargin = 12;
    painter.setPen(control.palette().color(QPalette::Text));
    painter.drawText(control.rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                     Qt::AlignCenter | Qt::TextWordWrap, text);
}

}  // namespace norvelis::ui
