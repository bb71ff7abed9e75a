#include "ui/controls/vbal_progress_bar.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace norvelis::ui {

vbalProgressBar::vbalProgressBar(const QString& name, QWidget* parent) : QProgressBar(parent) {
    setObjectName(name);
    setAccessibleName("Progress");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    hide();
}

void vbalProgressBar::Show(const ProgressBar& state) {
    text_ = QString::fromStdString(state.Text);
    setRange(static_cast<int>(state.Min), static_cast<int>(state.Max));
    setValue(static_cast<int>(std::lround(state.Value)));
    setToolTip(text_);  // What is painted may be shortened.
    setVisible(state.Visible);
    update();
}

void vbalProgressBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const QPalette& colors = palette();
    QPainterPath outline;
    outline.addRoundedRect(track, 4, 4);
    painter.fillPath(outline, colors.color(QPalette::Base));
    const double part =
        maximum() > minimum() ? static_cast<double>(value() - minimum()) / (maximum() - minimum()) : 0;
    const QRectF done(track.topLeft(), QSizeF(track.width() * part, track.height()));
    const auto write = [&](QPalette::ColorRole role) {
        painter.setPen(colors.color(role));
        painter.drawText(
            track.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft,
            fontMetrics().elidedText(text_, Qt::ElideRight, static_cast<int>(track.width()) - 16));
    };
    write(QPalette::Text);
    if (part > 0) {
        painter.save();
        painter.setClipRect(done);
        painter.fillPath(outline, colors.color(QPalette::Highlight));
        write(QPalette::HighlightedText);
        painter.restore();
    }
    painter.setPen(QPen(colors.color(QPalette::Mid), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(outline);
}

}  // namespace norvelis::ui
