#pragma once

#include <QImage>
#include <vector>

#include "drawing/render/scene.h"

namespace norvelis::drawing::render {

/// All scenes on one picture, each on a card with its name.
QImage ContactSheet(const std::vector<Scene>& scenes);

/// The choice of page backgrounds as the settings screen shows it: six columns by three rows of
/// kChoiceWidth by kChoiceHeight pixels, kChoiceGap apart and from the edges, in the order given; a few boxes
/// on each show how a drawing looks on it.
QImage BackgroundChoice(const std::vector<Scene>& backgrounds);
inline constexpr int kChoiceWidth = 132, kChoiceHeight = 102, kChoiceGap = 8, kChoiceColumns = 6;

}  // namespace norvelis::drawing::render
