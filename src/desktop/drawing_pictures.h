#pragma once

#include "ui/controls/drawing_picture.h"

namespace norvelis::desktop {

/// The first page of a drawing file, shown by the engine's own painter; what other programs wrote in forms
/// that it does not read is shown through libvisio.
std::unique_ptr<ui::DrawingPicture> OpenDrawingPicture(const QString& path);

}  // namespace norvelis::desktop
