#pragma once

#include <QIcon>
#include <QPalette>
#include <QStyle>

namespace norvelis::ui {

/// Folders, files, drives and the signs of message boxes in the colours of the palette; no icon for any
/// other.
QIcon SkinIcon(QStyle::StandardPixmap icon, const QPalette& palette);

}  // namespace norvelis::ui
