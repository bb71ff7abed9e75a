#include "ui/skins/art/skin_art.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <array>
#include <cmath>

namespace norvelis::ui {

namespace {

constexpr QSize kButton(96, 28), kMark(18, 18), kWindowButton(36, 28);
constexpr double kRound = 4;

bool IsDark(const QColor& color) {
    return color.lightness() < 128;
}

QColor Towards(const QColor& from, const QColor& to, double part) {
    const auto mix = [part](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * part)); };
    return QColor(mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue()));
}

QBrush Shaded(const QColor& top, const QColor& bottom, double height) {
    QLinearGradient gradient(0, 0, 0, height);
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    return gradient;
}

void PaintButton(QPainter& painter, const Theme& theme, bool down) {
    const QRectF area(0, 0, kButton.width(), kButton.height());
    painter.fillRect(area, theme.body);
    const double round = theme.bevelled ? 2.5 : kRound;
    const QColor edge = down ? theme.accent.darker(theme.bevelled ? 130 : 105) : theme.buttonBorder;
    QBrush face = Shaded(theme.buttonTop, theme.buttonBottom, area.height());
    if (down)
        face = theme.bevelled ? Shaded(theme.accent.darker(112), theme.accent, area.height()) : theme.accent;
    painter.setPen(QPen(edge, 1));
    painter.setBrush(face);
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), round, round);
    if (theme.bevelled && !down) {
        painter.setPen(QPen(Qt::white, 1));
        painter.drawLine(QPointF(2.5, 1.5), QPointF(area.width() - 2.5, 1.5));
    }
}

QColor MarkBack(const Theme& theme) {
    return IsDark(theme.body) ? theme.textBoxBack : QColor(Qt::white);
}

void PaintCheck(QPainter& painter, const Theme& theme, bool on) {
    const QRectF area(0, 0, kMark.width(), kMark.height());
    painter.fillRect(area, theme.body);
    const double round = theme.bevelled ? 1 : 3.5;
    const bool filled = on && !theme.bevelled;
    painter.setPen(QPen(on ? theme.accent : theme.markBorder, 1));
    painter.setBrush(filled ? theme.accent : MarkBack(theme));
    painter.drawRoundedRect(area.adjusted(1.5, 1.5, -1.5, -1.5), round, round);
    if (!on) return;
    QPen tick(filled ? QColor(Qt::white) : theme.accent, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(tick);
    painter.drawPolyline(QPolygonF{QPointF(5, 9.2), QPointF(7.8, 12), QPointF(13, 6.2)});
}

void PaintRadio(QPainter& painter, const Theme& theme, bool on) {
    const QRectF area(0, 0, kMark.width(), kMark.height());
    painter.fillRect(area, theme.body);
    painter.setPen(QPen(on ? theme.accent : theme.markBorder, on && !theme.bevelled ? 1.5 : 1));
    painter.setBrush(MarkBack(theme));
    painter.drawEllipse(area.adjusted(2, 2, -2, -2));
    if (!on) return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.accent);
    painter.drawEllipse(area.center(), 3.6, 3.6);
}

/// The caption bar's colour under the window buttons, which are at its right end.
QColor UnderWindowButtons(const Theme& theme) {
    return theme.captionEnd;
}

void PaintCross(QPainter& painter, QPointF at) {
    painter.drawLine(at + QPointF(-4.5, -4.5), at + QPointF(4.5, 4.5));
    painter.drawLine(at + QPointF(-4.5, 4.5), at + QPointF(4.5, -4.5));
}

void PaintDash(QPainter& painter, QPointF at) {
    painter.drawLine(at + QPointF(-5, 0.5), at + QPointF(5, 0.5));
}

void PaintTwoBoxes(QPainter& painter, QPointF at) {
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(at + QPointF(-4.5, -2.5), QSizeF(7, 7)));
    painter.drawPolyline(QPolygonF{at + QPointF(-2.5, -2.5), at + QPointF(-2.5, -4.5),
                                   at + QPointF(4.5, -4.5), at + QPointF(4.5, 2.5), at + QPointF(2.5, 2.5)});
}

void PaintWindowButton(QPainter& painter, const Theme& theme, void (*sign)(QPainter&, QPointF), bool down,
                       const QColor& downFace) {
    const QRectF area(0, 0, kWindowButton.width(), kWindowButton.height());
    const QColor bar = UnderWindowButtons(theme);
    painter.fillRect(area, bar);
    const QRectF face = area.adjusted(2, 1, -2, -1);
    painter.setPen(Qt::NoPen);
    if (down || theme.bevelled) {
        painter.setBrush(down ? downFace : Towards(bar, Qt::white, 0.18));
        if (theme.bevelled) painter.setPen(QPen(Towards(bar, Qt::white, 0.55), 1));
        painter.drawRoundedRect(face.adjusted(0.5, 0.5, -0.5, -0.5), kRound, kRound);
    }
    painter.setPen(QPen(down ? QColor(Qt::white) : theme.glyph, 1.4, Qt::SolidLine, Qt::RoundCap));
    sign(painter, area.center());
}

/// One record of the frame's motif: a box with its name cut off by a line.
void PaintMotifBox(QPainter& painter, QPointF at) {
    const QRectF box(at, QSizeF(92, 54));
    painter.drawRoundedRect(box, 3, 3);
    painter.drawLine(box.topLeft() + QPointF(0, 18), box.topRight() + QPointF(0, 18));
    painter.drawLine(box.topLeft() + QPointF(0, 36), box.topRight() + QPointF(0, 36));
    painter.drawLine(box.topLeft() + QPointF(46, 18), box.topLeft() + QPointF(46, 36));
}

void PaintMotif(QPainter& painter, QSize size) {
    const QPointF corner(size.width() - 470, size.height() - 330);
    const std::array<QPointF, 6> boxes = {QPointF(0, 120),   QPointF(170, 20),  QPointF(170, 220),
                                          QPointF(340, -20), QPointF(340, 120), QPointF(340, 250)};
    const auto connect = [&](std::size_t owner, std::size_t member) {
        const QPointF from = corner + boxes[owner] + QPointF(92, 27);
        const QPointF to = corner + boxes[member] + QPointF(0, 27);
        const double middle = (from.x() + to.x()) / 2;
        painter.drawPolyline(QPolygonF{from, QPointF(middle, from.y()), QPointF(middle, to.y()), to});
        painter.drawPolyline(QPolygonF{to + QPointF(-9, -5), to, to + QPointF(-9, 5)});
    };
    for (const QPointF& box : boxes) PaintMotifBox(painter, corner + box);
    connect(0, 1);
    connect(0, 2);
    connect(1, 3);
    connect(1, 4);
    connect(2, 5);
}

}  // namespace

QSize SkinPictureSize(SkinPicture picture) {
    switch (picture) {
        case SkinPicture::ButtonUp:
        case SkinPicture::ButtonDown:
            return kButton;
        case SkinPicture::CheckOn:
        case SkinPicture::CheckOff:
        case SkinPicture::RadioOn:
        case SkinPicture::RadioOff:
            return kMark;
        default:
            return kWindowButton;
    }
}

void PaintSkinPicture(QPainter& painter, const Theme& theme, SkinPicture picture) {
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor pressed = theme.bevelled ? theme.accent.darker(140) : theme.accent;
    const QColor closing(0xC9, 0x3A, 0x3A);
    switch (picture) {
        case SkinPicture::ButtonUp:
        case SkinPicture::ButtonDown:
            return PaintButton(painter, theme, picture == SkinPicture::ButtonDown);
        case SkinPicture::CheckOn:
        case SkinPicture::CheckOff:
            return PaintCheck(painter, theme, picture == SkinPicture::CheckOn);
        case SkinPicture::RadioOn:
        case SkinPicture::RadioOff:
            return PaintRadio(painter, theme, picture == SkinPicture::RadioOn);
        case SkinPicture::CloseUp:
        case SkinPicture::CloseDown:
            return PaintWindowButton(painter, theme, PaintCross, picture == SkinPicture::CloseDown, closing);
        case SkinPicture::MinimizeUp:
        case SkinPicture::MinimizeDown:
            return PaintWindowButton(painter, theme, PaintDash, picture == SkinPicture::MinimizeDown,
                                     pressed);
        case SkinPicture::RestoreUp:
        case SkinPicture::RestoreDown:
            return PaintWindowButton(painter, theme, PaintTwoBoxes, picture == SkinPicture::RestoreDown,
                                     pressed);
    }
}

void PaintForm(QPainter& painter, const Theme& theme, QSize size) {
    const QRectF area(QPoint(0, 0), QSizeF(size));
    painter.fillRect(area, theme.body);
    const QRectF bar(0, 0, area.width(), kCaptionHeight);
    // The right end stays of one colour: the window buttons' pictures must fit on it.
    QLinearGradient across(0, 0, area.width(), 0);
    across.setColorAt(0, theme.caption);
    across.setColorAt(1 - 130 / area.width(), theme.captionEnd);
    across.setColorAt(1, theme.captionEnd);
    painter.fillRect(bar, across);
    painter.fillRect(QRectF(0, kCaptionHeight - 1, area.width(), 1), theme.captionLine);

    const QPen edge(theme.border, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    painter.setPen(edge);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area.adjusted(0.5, 0.5, -0.5, -0.5));
    if (!theme.bevelled) painter.fillRect(QRectF(0, 0, 4, kCaptionHeight), theme.accent);
}

void PaintFrame(QPainter& painter, const Theme& theme, QSize size) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRect(QPoint(0, 0), size), Shaded(theme.frameTop, theme.frameBottom, size.height()));
    painter.setPen(QPen(theme.frameMotif, 1.2));
    painter.setBrush(Qt::NoBrush);
    painter.setOpacity(0.45);
    PaintMotif(painter, size);
    painter.setOpacity(1);
}

CaptionPlaces PlacesFor(QSize formSize) {
    const int top = (kCaptionHeight - kWindowButton.height()) / 2;
    const auto fromRight = [&](int place) {
        return QPoint(formSize.width() - 6 - place * kWindowButton.width(), top);
    };
    return {QPoint(18, 11), fromRight(1), fromRight(2), fromRight(3)};
}

}  // namespace norvelis::ui
