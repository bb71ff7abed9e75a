#pragma once

#include <vector>

#include "base/geometry.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Where a label is on its line: on a segment, from paths[line][segment] to the next point, at a coordinate
/// along it.
struct LabelSpot {
    int segment = -1;  ///< -1: nowhere yet, or no label.
    double at = 0;
    double offset = 0;  ///< How far its middle is off the line, to the right or upwards.
};

/// Segments of a path are horizontal and vertical in turn; a slanting line, where boxes left nothing else,
/// has none.
enum class FirstSegment : char { Horizontal, Vertical, Slanting };

/// A drawing of boxes, horizontal and vertical segments of lines, and labels, while it can still be moved
/// about.
struct Sketch {
    std::vector<Rect> boxes;  ///< Notes come last.
    std::vector<Line> lines;
    std::vector<std::vector<Point>> paths;
    std::vector<FirstSegment> firstSegments;  ///< One for each line.
    std::vector<LabelSpot> labels;            ///< One for each line.
    bool trunks = false;  ///< Segments of one owner's lines that lie on one another belong together.
    std::vector<int> boxesWithNote{};  ///< For each note, the box that it moves with.
};

/// Around all boxes and lines.
Rect PageOf(const Sketch& sketch);

/// Turns the drawing over its diagonal: x becomes y.
void Transpose(Sketch& sketch);

inline bool IsVertical(const Sketch& sketch, std::size_t line, std::size_t segment) {
    return (sketch.firstSegments[line] == FirstSegment::Vertical) == (segment % 2 == 0);
}

inline Point LabelMiddle(const Sketch& sketch, std::size_t line) {
    const LabelSpot& spot = sketch.labels[line];
    const auto segment = static_cast<std::size_t>(spot.segment);
    const Point a = sketch.paths[line][segment];
    return IsVertical(sketch, line, segment) ? Point{a.x + spot.offset, spot.at}
                                             : Point{spot.at, a.y + spot.offset};
}

inline Rect LabelArea(const Sketch& sketch, std::size_t line) {
    return RectAround(LabelMiddle(sketch, line), sketch.lines[line].labelWidth,
                      sketch.lines[line].labelHeight);
}

}  // namespace norvelis::layout
