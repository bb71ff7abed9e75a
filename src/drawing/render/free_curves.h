#pragma once

#include <QPainterPath>
#include <vector>

#include "drawing/render/outline_row.h"

// The geometry rows of free curves. All go on from the path's current position; numbers that make no curve
// give a straight line to the row's point.
namespace norvelis::drawing::render {

/// A non-uniform rational B-spline in one row.
void AddNurbs(QPainterPath& path, const OutlineRow& row, double width, double height);

/// The points of one row, joined by straight lines.
void AddPolyline(QPainterPath& path, const OutlineRow& row, double width, double height);

/// A B-spline in several rows: one SplineStart and the SplineKnots behind it.
class Spline {
  public:
    Spline() = default;
    Spline(QPointF from, const OutlineRow& start);
    void AddKnot(const OutlineRow& knot);
    /// Ends the spline, if there is one.
    void AddTo(QPainterPath& path);

  private:
    std::vector<QPointF> points_;
    std::vector<double> knots_;
    double lastKnot_ = 0;
    int degree_ = 0;
};

}  // namespace norvelis::drawing::render
