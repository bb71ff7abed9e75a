#pragma once

#include <optional>
#include <vector>

#include "drawing/session/session.h"
#include "layout/graph/graph.h"

// Lines that are glued to boxes, as the file format keeps them: a Connect record for each end, triggers that
// fire when a box moves, and a route in the line's own geometry.
namespace norvelis::drawing {

bool IsOneDimensional(const Shape& shape);

/// The shape that an end of the line is glued to; null when it is free.
Shape* GluedTo(const Canvas& canvas, const Shape& line, bool begin);

/// Glues an end to a whole shape: it lies on the shape's border and follows it. False for a shape without
/// ends.
bool GlueEnd(OpenDocument& document, Canvas& canvas, Shape& line, bool begin, const Shape& box);

/// The line begins there until its box moves.
void PutBegin(OpenDocument& document, Canvas& canvas, Shape& line, Point begin);

/// An arc over other lines, on the horizontal segment behind a point of a straight route; x in its direction.
struct LineJump {
    std::size_t segment;
    double from, to;
};

/// Writes the route of a line, with its jumps in their order, and the place of its label. The ends keep their
/// glue.
void WriteRoute(OpenDocument& document, Canvas& canvas, Shape& line, const layout::Route& route,
                const std::vector<LineJump>& jumps);

/// Gives the line the route of one that joins boxes at the same places, on a page of before, with its jumps
/// and the place of its label.
void CopyRoute(OpenDocument& document, Canvas& canvas, Shape& line, const Shape& from);

/// The line runs straight again, as its master does.
void DropRoute(OpenDocument& document, Canvas& canvas, Shape& line);

/// The same for all lines that are glued to the box.
void DropRoutesOf(OpenDocument& document, Canvas& canvas, const Shape& box);

/// Points of the line's route on the page, corners of curves included.
std::vector<Point> RouteOf(OpenDocument& document, Canvas& canvas, Shape& line);

}  // namespace norvelis::drawing
