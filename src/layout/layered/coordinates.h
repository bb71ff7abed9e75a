#pragma once

#include "layout/graph/graph.h"
#include "layout/graph/style.h"
#include "layout/layered/grid.h"

namespace norvelis::layout {

/// Where a line meets its upper and its lower box.
struct Ports {
    double upper = 0, lower = 0;
};

/// Gives every place its x: the order of each row and least distances hold, lines are as straight and the
/// whole as narrow as can be; then bends that are not needed are taken out (straightening.h) and ports slide
/// along their boxes to be in line. The lines of a box with a trunk (trunks.h) leave it by one point. Returns
/// the ports of each line. Gansner, Koutsofios, North, Vo: A technique for drawing directed graphs (1993),
/// optimal node coordinates.
std::vector<Ports> AssignCoordinates(const Graph& graph, const Style& style, const std::vector<bool>& trunks,
                                     Grid& grid);

}  // namespace norvelis::layout
