#pragma once

#include <QPainter>

#include "ui/skins/skin.h"

// How a control that a skin's picture makes shows where mouse and keyboard are. `accent` is the skin's, as
// its palette has it for highlights.
namespace norvelis::ui {

void PaintUnderMouse(QPainter& painter, const QRectF& area, const QColor& accent, double radius);
void PaintFocusRing(QPainter& painter, const QRectF& area, const QColor& accent, double radius);

/// Of a push button: its picture's, or more for larger text.
int ButtonHeight(const Picture& picture, int textHeight);

struct ButtonState {
    bool down, underMouse, ringed;
};

/// A push button without its caption: the picture for up or down, stretched but for its margin.
void PaintButtonFace(QPainter& painter, const QRectF& area, const PicturePair& pictures, const QColor& accent,
                     ButtonState state);

}  // namespace norvelis::ui
