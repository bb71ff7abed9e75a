#pragma once

#include <cstddef>
#include <initializer_list>
#include <vector>

#include "base/geometry.h"

// Outlines of our artwork as data: x grows to the right, y grows upwards, both in fractions of the frame that
// the outline is drawn in, so that a master keeps its look at any size.
namespace norvelis::drawing::stencils {

struct Segment {
    enum Kind { Move, Line, Curve } kind;
    Point to;
    Point control1, control2;  ///< Of a cubic curve.
};

class Path {
  public:
    Path& Move(double x, double y);
    Path& Line(double x, double y);
    Path& Curve(double x1, double y1, double x2, double y2, double x, double y);
    Path& Close();  ///< A line back to the last Move.

    Path& Rectangle(double left, double bottom, double right, double top);
    Path& Ellipse(double x, double y, double radiusX, double radiusY);
    Path& Polygon(std::initializer_list<Point> corners);
    Path& Polygon(const std::vector<Point>& corners);
    Path& Polyline(const std::vector<Point>& points);

    /// A smooth line through the points (Catmull-Rom, as cubic curves). `join` goes on from the present point
    /// with a straight line instead of starting a new one.
    Path& Smooth(const std::vector<Point>& points, bool join = false);
    Path& SmoothClosed(const std::vector<Point>& points);

    const std::vector<Segment>& Segments() const { return segments_; }
    bool Empty() const { return segments_.empty(); }

  private:
    void Through(Point before, Point from, Point to, Point after);

    std::vector<Segment> segments_;
    Point start_;
};

}  // namespace norvelis::drawing::stencils
