#pragma once

#include <vector>

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// A closed curve |x/a|^power + |y/b|^power = 1: power 2 is an ellipse, greater powers are rounder
/// rectangles, on which wide boxes waste less space (Piet Hein's superellipse).
struct RingShape {
    double a = 0, b = 0;
    double power = 2;

    Point At(double angle) const;
};

/// Space for boxes around a hole: one lane, or several where one would be much longer than the hole asks for.
///
/// Places on a ring are given in turns, from 0 to 1 anticlockwise from the right, that grow by equal steps
/// from box to box wherever it is: along the top and bottom, where widths keep boxes apart, more slowly than
/// along the sides, where heights do. A turn points in nearly the same direction on all rings of one middle.
class Ring {
  public:
    /// `largest` box on it, `step` from one box to the next along the top (its width) and the sides (its
    /// height), and how many steps are to have space.
    Ring(const RingShape& hole, const Box& largest, const Box& gaps, const Box& step, double steps,
         int mostLanes);

    /// The part of a turn that so many steps take.
    double TurnsOf(double steps) const { return steps / capacity_; }
    /// The places at ascending turns, around the hole's middle. `isOutermost`: for each, whether it must be
    /// on the outermost lane; the lanes are taken in turn otherwise, so that what follows each other stays
    /// near each other.
    std::vector<Point> Places(const std::vector<double>& turns, const std::vector<bool>& isOutermost) const;
    /// What the ring covers, as a hole for the next one.
    RingShape Cover() const;
    /// Whether the ring runs along the top or bottom at the turn.
    bool RunsHorizontally(double turn) const;

  private:
    /// The path along a lane, measured in steps.
    struct Lane {
        RingShape shape;
        std::vector<double> passed;  ///< From angle 0 to each of equal angles; the last is the whole.
        double Angle(double turn) const;
    };
    Lane MakeLane(const RingShape& shape) const;
    void MakeLanes(int count, double grown);

    RingShape hole_;
    Box largest_, gaps_, step_;
    std::vector<Lane> lanes_;
    double capacity_ = 0;
};

/// Moves turns, ascending and within one turn, as little as possible to keep their distances, distance[i]
/// from the one before (for the first, from the last); when all are taken, all are at their distances.
std::vector<double> SeparateAround(const std::vector<double>& turns, const std::vector<double>& distance);

}  // namespace norvelis::layout
