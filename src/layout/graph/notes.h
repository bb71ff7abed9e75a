#pragma once

#include <vector>

#include "layout/graph/graph.h"

// Notes hang on their boxes: whoever moves a box moves its note, and to lines and labels both are obstacles.
namespace norvelis::layout {

/// From a box to its note, in inches; no line fits between.
inline constexpr double kNoteGap = 0.15;

/// Where the note of a box is: level with the box's upper or left border, or in the middle of a side that is
/// shorter than the note.
Rect NoteBeside(const Rect& box, double width, double height, NoteSide side);

/// Where the box at `center` and its note are.
Rect BoxAt(const Box& box, Point center);
Rect NoteAt(const Box& box, Point center);

/// The boxes at their centers, and behind them the notes of those that have one.
std::vector<Rect> BoxesAndNotes(const Graph& graph, const std::vector<Point>& centers);

/// The boxes that have notes, in their order.
std::vector<int> BoxesWithNote(const Graph& graph);

std::vector<NoteSide> NoteSidesOf(const Graph& graph);

/// What a note takes to the right or left of its box; nothing when there is none.
double NoteSpace(const Box& box);

/// The height of a box with a note to the right or left of it.
double HeightWithNote(const Box& box);

}  // namespace norvelis::layout
