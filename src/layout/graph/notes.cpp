#include "layout/graph/notes.h"

#include <cstddef>

namespace norvelis::layout {

Rect NoteBeside(const Rect& box, double width, double height, NoteSide side) {
    const bool isBeside = side == NoteSide::Right || side == NoteSide::Left;
    const Point middle = box.Center();
    const double top = middle.y + std::max(box.Height(), height) / 2,
                 left = middle.x - std::max(box.Width(), width) / 2;
    const double x0 = side == NoteSide::Right  ? box.x1 + kNoteGap
                      : side == NoteSide::Left ? box.x0 - kNoteGap - width
                                               : left;
    const double y0 = isBeside                  ? top - height
                      : side == NoteSide::Above ? box.y1 + kNoteGap
                                                : box.y0 - kNoteGap - height;
    return {x0, y0, x0 + width, y0 + height};
}

Rect BoxAt(const Box& box, Point center) {
    return RectAround(center, box.width, box.height);
}

Rect NoteAt(const Box& box, Point center) {
    return NoteBeside(BoxAt(box, center), box.noteWidth, box.noteHeight, box.noteSide);
}

std::vector<Rect> BoxesAndNotes(const Graph& graph, const std::vector<Point>& centers) {
    std::vector<Rect> areas;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) areas.push_back(BoxAt(graph.boxes[i], centers[i]));
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        if (graph.boxes[i].HasNote()) areas.push_back(NoteAt(graph.boxes[i], centers[i]));
    return areas;
}

std::vector<int> BoxesWithNote(const Graph& graph) {
    std::vector<int> boxes;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        if (graph.boxes[i].HasNote()) boxes.push_back(static_cast<int>(i));
    return boxes;
}

std::vector<NoteSide> NoteSidesOf(const Graph& graph) {
    std::vector<NoteSide> sides;
    for (const Box& box : graph.boxes) sides.push_back(box.noteSide);
    return sides;
}

double NoteSpace(const Box& box) {
    return box.HasNote() ? kNoteGap + box.noteWidth : 0;
}

double HeightWithNote(const Box& box) {
    return std::max(box.height, box.noteHeight);
}

}  // namespace norvelis::layout
