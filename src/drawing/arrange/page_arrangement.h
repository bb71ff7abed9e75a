#pragma once

#include <vector>

#include "base/geometry.h"
#include "drawing/session/session.h"
#include "layout/graph/graph.h"

// What the engine does with a page as a whole: placing and routing, the page's size, notes. Boxes are shapes
// that lines may be glued to and that the layout moves; lines are connectors with a box at each end; notes
// are shapes of the annotation master; decorations (backgrounds, titles) belong to the page and count
// for nothing.
namespace norvelis::drawing {

enum class Role { Box, Line, Note, Decoration, Other };
Role RoleOf(const Page& page, const Shape& shape);

/// For each box the notes that are glued to it, in their order on the page.
std::vector<std::vector<Shape*>> NotesOf(const Page& page, const std::vector<Shape*>& boxes);

/// Bounds of a shape's block on its page, of a line's label, and of all that a note covers.
Rect BlockOf(OpenDocument& document, Page& page, Shape& shape);
Rect LabelOf(OpenDocument& document, Page& page, Shape& line);
Rect NoteOf(OpenDocument& document, Page& page, Shape& note);
std::vector<layout::Box> SizesOfNotes(OpenDocument& document, Page& page, const std::vector<Shape*>& notes);

/// A page of a drawing that was made before, of an open document that is only read.
struct FormerPage {
    OpenDocument& document;
    Page& page;
};

/// Places all boxes and routes all lines by the page's layout row, with room for the notes of boxes; notes
/// that are there move into it. With a page of before that has the same layout row, boxes keep as far as can
/// be the order and neighbourhood of the boxes of their names there; if nothing that counts has changed, all
/// is where it was.
void LayOutPage(OpenDocument& document, Page& page, const FormerPage* former = nullptr);

/// The page becomes as large as its contents, a margin, and a strip for a title where there is one. An empty
/// page keeps its size.
void ResizePageToContents(OpenDocument& document, Page& page);

/// Moves the contents to the middle of the page, below the title.
void CenterContents(OpenDocument& document, Page& page);

/// Both, when the contents reach into the margins of the page.
void GrowPageToContents(OpenDocument& document, Page& page);

/// Moves the notes of each box into the room that the layout kept for them. Where that is too small, and
/// where there is none, each goes to the nearest free place; one that also leaves the lines free is preferred
/// when it is not much farther. The page grows where it must.
void FindSpaceForNotes(OpenDocument& document, Page& page);

}  // namespace norvelis::drawing
