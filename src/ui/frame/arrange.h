#pragma once

#include <QRect>
#include <QSize>
#include <vector>

namespace norvelis::ui {

/// Places for windows side by side, in rows that fill the area. They are as near to a window's usual shape as
/// goes without one being smaller than it can be; where there is no room for that they overlap.
std::vector<QRect> Tiles(QSize area, const std::vector<QSize>& smallest);

/// Places for windows of these sizes, each a little below and to the right of the one before.
std::vector<QRect> Cascade(QSize area, const std::vector<QSize>& sizes);

}  // namespace norvelis::ui
