#pragma once

#include <vector>

#include "drawing/layout/graph.h"

namespace norvelis::layout {

/// A closed curve |x/a|^power + |y/b|^power = 1: power 2 is an ellipse, greater powers are rounder
/// rectangles, on which wide boxes waste less room (Piet Hein's superellipse).
struct RingShape {
    double a = 0, b = 0;
    double power = 2;

    Point At(double angle) const;
};

struct RingBox {
    Box size;
    double angle = 0;  ///< Where it would like to stand, in radians.
    Point center;      ///< Where it stands, around the origin.
    int id = 0;        ///< The caller's.
};

/// Puts boxes, in their order of angles, on a ring around a hole of the given half axes: one lane, or as many
/// as the boxes need when the ring would otherwise be much longer than the hole asks for. Widens the hole to
/// what the ring takes. Boxes of one lane keep the gaps; those of other rings keep them unless very unlike in
/// size (see KeepApart).
void PlaceOnRing(std::vector<RingBox>& boxes, RingShape& hole, double gapX, double gapY, int mostLanes);

/// Whether all boxes keep the gaps from one another.
bool AreApart(const std::vector<Box>& boxes, const std::vector<Point>& centers, double gapX, double gapY);

/// Spreads the centres evenly until all boxes keep the gaps; directions stay.
void KeepApart(const std::vector<Box>& boxes, std::vector<Point>& centers, double gapX, double gapY);

}  // namespace norvelis::layout
