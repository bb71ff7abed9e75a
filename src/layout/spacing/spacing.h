#pragma once

#include "layout/spacing/sketch.h"

namespace norvelis::layout {

/// Moves boxes, segments of lines and labels so that all keep their distance, along one axis after the other.
/// Nothing changes its order along an axis with what it is beside, so that no line gets into a box or on
/// another line's label; what has space already hardly moves. Compaction by constraint graphs: Liao, Wong
/// (1983); Lengauer: Combinatorial algorithms for integrated circuit layout (1990).
void MakeSpace(Sketch& sketch, double boxGapX, double boxGapY, double lineGap, double squeeze);

/// The same for boxes alone, and the notes of `boxesWithNote` behind them.
void SpreadBoxes(std::vector<Rect>& boxes, double gapX, double gapY, double squeeze = 1,
                 const std::vector<int>& boxesWithNote = {});

}  // namespace norvelis::layout
