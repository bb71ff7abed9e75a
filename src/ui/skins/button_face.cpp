#include "ui/skins/button_face.h"

#include <algorithm>

namespace norvelis::ui {

namespace {

constexpr double kRound = 4;  // In points.
constexpr QMarginsF kFaceMargins(8, 8, 8, 8);

}  // namespace

void PaintUnderMouse(QPainter& painter, const QRectF& area, const QColor& accent, double radius) {
    constexpr int kFaint = 28;
    QColor tint = accent;
    tint.setAlpha(kFaint);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tint);
    painter.drawRoundedRect(area.adjusted(1, 1, -1, -1), radius, radius);
}

void PaintFocusRing(QPainter& painter, const QRectF& area, const QColor& accent, double radius) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(accent, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(1, 1, -1, -1), radius, radius);
}

int ButtonHeight(const Picture& picture, int textHeight) {
    constexpr int kAir = 8;
    return std::max(picture.Size().height(), textHeight + kAir);
}

void PaintButtonFace(QPainter& painter, const QRectF& area, const PicturePair& pictures, const QColor& accent,
                     ButtonState state) {
    (state.down ? pictures.second : pictures.first).PaintPatches(painter, area, kFaceMargins);
    if (state.down) return;
    if (state.underMouse) PaintUnderMouse(painter, area, accent, kRound);
    if (state.ringed) PaintFocusRing(painter, area, accent, kRound);
}

}  // namespace norvelis::ui
