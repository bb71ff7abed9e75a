#pragma once

#include <QPainter>
#include <QPoint>
#include <QSize>

#include "ui/skins/art/skin_files.h"
#include "ui/skins/art/theme.h"

// A skin's pictures, drawn from its theme. Sizes and places are in points: pixels of a display of one pixel
// to the point.
namespace norvelis::ui {

QSize SkinPictureSize(SkinPicture picture);
void PaintSkinPicture(QPainter& painter, const Theme& theme, SkinPicture picture);

/// The background of a form: border, caption bar, body. The body is of one colour, so that the pictures of
/// controls fit anywhere on it.
void PaintForm(QPainter& painter, const Theme& theme, QSize size);

/// The background of the main frame.
void PaintFrame(QPainter& painter, const Theme& theme, QSize size);

inline constexpr int kCaptionHeight = 40;

/// Where a form of this size has its caption and window buttons.
struct CaptionPlaces {
    QPoint lblCaption, imgClose, imgRestore, imgMinimize;
};
CaptionPlaces PlacesFor(QSize formSize);

}  // namespace norvelis::ui
