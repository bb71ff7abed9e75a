#include "layout/rings/note_sides.h"

#include <cstddef>
#include <limits>

#include "layout/geometry/obstacles.h"
#include "layout/graph/notes.h"
#include "layout/spacing/spacing.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

bool AnyOverlap(const std::vector<Rect>& areas, const Rect& with) {
    return std::any_of(areas.begin(), areas.end(), [&](const Rect& area) { return Overlap(area, with); });
}

void ChooseSides(Graph& graph, const std::vector<Point>& centers) {
    constexpr int kForOverlap = 3;  // lines for one box or note in the way
    std::vector<std::vector<int>> linesAt(graph.boxes.size());
    for (std::size_t k = 0; k < graph.lines.size(); ++k)
        for (const int end : {graph.lines[k].from, graph.lines[k].to})
            linesAt[At(end)].push_back(static_cast<int>(k));
    std::vector<Rect> boxes, notes;
    for (std::size_t i = 0; i < centers.size(); ++i) boxes.push_back(BoxAt(graph.boxes[i], centers[i]));
    const Obstacles obstacles(boxes);
    for (std::size_t i = 0; i < centers.size(); ++i) {
        Box box = graph.boxes[i];
        if (!box.HasNote()) continue;
        int least = std::numeric_limits<int>::max();
        for (const NoteSide side : {NoteSide::Right, NoteSide::Left, NoteSide::Above, NoteSide::Below}) {
            box.noteSide = side;
            const Rect note = NoteAt(box, centers[i]), around = note.Grown(kNoteGap);
            int barred = obstacles.Cover(note) || AnyOverlap(notes, note) ? kForOverlap : 0;
            // Of many notes above a box the last has a long leader.
            const bool isBeside = side == NoteSide::Right || side == NoteSide::Left;
            if (!isBeside && box.noteHeight > box.height) barred += kForOverlap;
            for (const int line : linesAt[i]) {
                const Line& at = graph.lines[At(line)];
                barred += SegmentHits(centers[At(at.from)], centers[At(at.to)], around);
            }
            if (barred >= least) continue;
            least = barred;
            graph.boxes[i].noteSide = side;
        }
        notes.push_back(NoteAt(graph.boxes[i], centers[i]));
    }
}

}  // namespace

void MakeRoomForNotes(Graph& graph, double gapX, double gapY, std::vector<Point>& centers) {
    constexpr int kMostRounds = 4;
    const std::vector<int> withNote = BoxesWithNote(graph);
    if (withNote.empty()) return;
    for (int round = 0; round < kMostRounds; ++round) {
        ChooseSides(graph, centers);
        std::vector<Rect> areas = BoxesAndNotes(graph, centers);
        SpreadBoxes(areas, gapX, gapY, 1, withNote);
        for (std::size_t i = 0; i < centers.size(); ++i) centers[i] = areas[i].Center();
        // What faces one another crosswise cannot all move apart; other sides may help.
        bool isClear = true;
        while (isClear && !areas.empty()) {
            const Rect area = areas.back();
            areas.pop_back();
            isClear = !AnyOverlap(areas, area);
        }
        if (isClear) return;
    }
}

}  // namespace norvelis::layout
