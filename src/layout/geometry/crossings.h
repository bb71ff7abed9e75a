#pragma once

#include <cstddef>
#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// Where two paths cross: numbers of the paths, the first one lower, and of their segments.
struct Crossing {
    std::size_t first = 0, second = 0;
    std::size_t firstSegment = 0, secondSegment = 0;
    Point at;
};

/// All points where segments of two paths cross inside both, in the order of the paths, then along the first.
std::vector<Crossing> CrossingsOf(const std::vector<std::vector<Point>>& paths);

}  // namespace norvelis::layout
