#include "ui/controls/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace norvelis::ui {

ElidedLabel::ElidedLabel(const QString& name, const QString& text, QWidget* parent) : QLabel(text, parent) {
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    QString tip = toolTip().toHtmlEscaped();
    if (!toolTip().endsWith(text())) tip += (tip.isEmpty() ? "" : "<br>") + text().toHtmlEscaped();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    painter.drawText(contentsRect(), static_cast<int>(alignment() | Qt::TextSingleLine),
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()));
}

}  // namespace norvelis::ui
