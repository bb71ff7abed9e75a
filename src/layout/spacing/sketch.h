#pragma once

#include <vector>

#include "base/geometry.h"
#include "layout/graph/graph.h"

namespace norvelis::layout {

/// Where a label stands on its line: on a piece, from ways[line][piece] to the next point, at a coordinate
/// along it.
struct LabelSpot {
    int piece = -1;  ///< -1: nowhere yet, or no label.
    double at = 0;
    double aside = 0;  ///< How far its middle is off the line, to the right or upwards.
};

/// Pieces of a way are level and upright in turn; a slanting line, where boxes left no other way, has none.
enum class FirstPiece : char { Level, Upright, Slanting };

/// A drawing of boxes, level and upright pieces of lines, and labels, while it can still be moved about.
struct Sketch {
    std::vector<Rect> boxes;
    std::vector<Line> lines;
    std::vector<std::vector<Point>> ways;
    std::vector<FirstPiece> firstPieces;  ///< One for each line.
    std::vector<LabelSpot> labels;        ///< One for each line.
    bool trunks = false;  ///< Pieces of one owner's lines that lie on one another belong together.
};

/// Around all boxes and lines.
Rect PageOf(const Sketch& sketch);

/// Turns the drawing over its diagonal: x becomes y.
void Transpose(Sketch& sketch);

inline bool IsUpright(const Sketch& sketch, std::size_t line, std::size_t piece) {
    return (sketch.firstPieces[line] == FirstPiece::Upright) == (piece % 2 == 0);
}

inline Point LabelMiddle(const Sketch& sketch, std::size_t line) {
    const LabelSpot& spot = sketch.labels[line];
    const auto piece = static_cast<std::size_t>(spot.piece);
    const Point a = sketch.ways[line][piece];
    return IsUpright(sketch, line, piece) ? Point{a.x + spot.aside, spot.at}
                                          : Point{spot.at, a.y + spot.aside};
}

inline Rect LabelArea(const Sketch& sketch, std::size_t line) {
    return RectAround(LabelMiddle(sketch, line), sketch.lines[line].labelWidth,
                      sketch.lines[line].labelHeight);
}

}  // namespace norvelis::layout
