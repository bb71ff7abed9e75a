#include "ui/controls/tip_window.h"

#include <QPainter>
#include <QScreen>
#include <algorithm>

#include "ui/skins/skin_style.h"

namespace norvelis::ui {

TipWindow::TipWindow(const QString& name, QWidget* owner)
    : QWidget(owner, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput) {
    setObjectName(name);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QFont verdana = font();
    verdana.setFamilies({"Verdana", "DejaVu Sans", font().family()});
    verdana.setPixelSize(qRound(11 * TextScale()));
    setFont(verdana);
}

QLabel* TipWindow::AddLabel(const QString& name, const QString& spoken) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setAccessibleName(spoken);
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(QPalette::ToolTipText);
    return label;
}

QLabel* TipWindow::AddHeading(const QString& name, const QString& spoken) {
    QLabel* heading = AddLabel(name, spoken);
    QFont bold = font();
    bold.setBold(true);
    heading->setFont(bold);
    return heading;
}

void TipWindow::ShowAt(QPoint place) {
    adjustSize();
    const QRect area = screen()->availableGeometry();
    place.setX(std::max(area.left(), std::min(place.x(), area.right() - width())));
    place.setY(std::max(area.top(), std::min(place.y(), area.bottom() - height())));
    move(place);
    show();
    raise();
}

void TipWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().toolTipBase());
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace norvelis::ui
