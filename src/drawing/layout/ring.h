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

/// Room for boxes around a hole: one lane, or several where one would be much longer than the hole asks for.
///
/// Places on a ring are told in turns, from 0 to 1 anticlockwise from the right, that grow by equal steps
/// from box to box wherever it is: along the top and bottom, where widths keep boxes apart, more slowly than
/// along the sides, where heights do. A turn points in nearly the same direction on all rings of one middle.
class Ring {
  public:
    /// `hole`: what the ring stands around. `sizes`: of the boxes that it is for, in any order.
    Ring(const RingShape& hole, const std::vector<Box>& sizes, double gapX, double gapY, int mostLanes);

    /// The part of a turn from one box to the next.
    double Distance(const Box& a, const Box& b) const;
    /// Middles of boxes, given with ascending turns at their distances, around the hole's middle. Those of
    /// very unlike sizes may stand too near to each other.
    std::vector<Point> Place(const std::vector<Box>& sizes, const std::vector<double>& turns) const;
    double AngleOf(double turn) const;
    /// What the ring covers, as a hole for the next one.
    RingShape Cover() const;

  private:
    /// The way along a lane, measured in mean boxes with their gaps.
    struct Lane {
        RingShape shape;
        std::vector<double> passed;  ///< From angle 0 to each of equal angles; the last is the whole.
        double Angle(double turn) const;
    };
    Lane MakeLane(const RingShape& shape) const;
    void MakeLanes(int count, double grown);

    double gapX_, gapY_, pitchX_ = 0, pitchY_ = 0, width_ = 0, height_ = 0;
    RingShape hole_;
    std::vector<Lane> lanes_;
    double capacity_ = 0;
};

/// Moves turns, ascending and within one turn, as little as possible to keep their distances, distance[i]
/// from the one before (for the first, from the last); when all are taken, all stand at their distances.
std::vector<double> SeparateAround(const std::vector<double>& turns, const std::vector<double>& distance);

}  // namespace norvelis::layout
