#pragma once

#include "layout/graph/graph.h"

namespace norvelis::layout {

/// What a reader sees of the notes. A leader is the shortest way from a note to its box.
struct NoteQuality {
    int notes = 0;
    int collisions = 0;        ///< Pairs of a note and a box, a label or another note that it covers in part.
    int overLines = 0;         ///< Notes that a line runs through.
    int strangers = 0;         ///< Notes that are nearer to another box than to their own.
    int barredLeaders = 0;     ///< Leaders over a box, a label or another note.
    int crossedLeaders = 0;    ///< Leaders that a line crosses.
    double longestLeader = 0;  ///< Inches.
};

NoteQuality MeasureNotes(const Graph& graph, const Placement& placement);

}  // namespace norvelis::layout
