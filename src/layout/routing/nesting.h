#pragma once

#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// Lines that bend at one corner are moved apart, one outside the other, as far as what is in the way
/// allows.
void NestBends(std::vector<std::vector<Point>>& paths, const std::vector<Rect>& boxes, double gap);

}  // namespace norvelis::layout
