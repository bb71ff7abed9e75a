#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "diagram/drawing_state.h"

// The one sequence that every drawing goes through: engine, boxes, lines, background and layout, notes,
// labels, saved file. Between engine and file each page has its own turn. No step can be left out or change
// its place: background and layout come after the lines, which the layout routes, and before the notes, which
// are placed by where the boxes end up.
namespace norvelis {

/// How the ways to draw differ. A "{}" in a text is the name of what is drawn; an empty text is not shown.
struct DrawKind {
    bool colorsEachBox;  ///< Each box has a colour of its own; otherwise each parent's tree has one.
    bool namesPage;      ///< The page takes the name of the parent that was drawn last.
    bool titleInCapitals;
    void (DrawScreen::*showParent)(NodeIndex);  ///< What becomes of a parent's node while it is drawn.
    std::string_view starting;
    std::string_view creating, parentDone;  ///< Around the tree of each parent.
    std::string_view connecting, layingOut, arranging, finished;
    std::string_view engineFails, engineIsNull;  ///< The answers when there is no engine to draw with.
};

extern const DrawKind kDrawSingle;    ///< A whole schema, ordered by a person or by a schedule.
extern const DrawKind kDrawSeparate;  ///< One of many files, one for each parent.
extern const DrawKind kDrawIsolated;  ///< What the isolate screen shows.
extern const DrawKind kDrawChosen;    ///< Records that a person chose, on one page or several.

struct PageOrder {
    std::function<void(const PageRef& page)> addShapes;
    std::string title{};  ///< Empty: the drawing's name.
};

/// What is drawn. The name is in the texts and in the title, and names the file.
struct DrawOrder {
    std::string name;
    std::string location, subfolder;  ///< The file is location\subfolder\name.vsd.
    bool visible = false;             ///< The engine shows its window.
    std::vector<PageOrder> pages;

    /// In the letters in which folder and file are on disk, when they are there.
    std::string File() const;
    /// Makes the folder of the file; RuntimeFailure where its names are no file names or the disk refuses.
    void MakeFolder() const;
};

enum class DrawResult { NoEngine, NotSaved, Saved };

struct DrawnFile {
    DrawResult result = DrawResult::NotSaved;
    std::string file;  ///< Empty when nothing was drawn.
};

/// Draws and saves. A file that is there is replaced when the new one is whole, and not before. What was not
/// written goes to `notWritten` of the state.
DrawResult DrawDrawing(DrawingState& drawing, const DrawKind& kind, const DrawOrder& order);

/// Tells the person in one box what the drawings of a command lack on disk, and why; as a rule there is none.
void ReportNotWritten(DrawingState& drawing);

/// The words for a drawing, or its .vsdx copy, that is not on disk; empty when both are.
std::string NotWritten(const engine::SaveResult& result);

/// One parent: names the page after it, draws the record's tree, takes a snapshot. Nothing for a blank name.
void AddParentToPage(DrawingState& drawing, const DrawKind& kind, const PageRef& page,
                     const std::string& recordName);

/// The drawing as it is, under a random name in the Temp folder, so that one sees it grow. At most twice
/// a second, and large drawings so seldom that nine tenths of the time go into the drawing itself.
void SnapshotDrawing(DrawingState& drawing, engine::Page& page);

}  // namespace norvelis
