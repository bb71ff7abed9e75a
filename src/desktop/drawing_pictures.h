#pragma once

#include "ui/controls/drawing_picture.h"

namespace norvelis::desktop {

/// The pages of a drawing file, shown by the engine's own painter; what other programs wrote in forms that it
/// does not read is shown through libvisio.
std::shared_ptr<const ui::DrawingPages> OpenDrawingPages(const QString& path);

}  // namespace norvelis::desktop
