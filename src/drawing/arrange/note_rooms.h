#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "drawing/session/session.h"
#include "layout/graph/graph.h"

// The notes of one box share a room beside it. A note's leader begins at the box and ends at the note's stem,
// which is on the side that faces the box.
namespace norvelis::drawing {

/// How large a note with this text will be; nothing when the stencil of notes is not there.
std::optional<layout::Box> SizeOfNote(OpenDocument& document, const std::string& text, double mostWidth);

/// The smallest room for the notes, whatever side of their box it is on.
layout::Box RoomFor(const std::vector<layout::Box>& notes);

/// Where each of the notes is in the room on that side of the box.
std::vector<Rect> PlacesInRoom(const Rect& box, const std::vector<layout::Box>& notes, layout::NoteSide side);

/// From the box to the edge of the note.
struct Leader {
    Point begin, end;
};
Leader LeaderOf(const Rect& box, const Rect& note);

/// Moves a note there; its leader begins at its box, if it has one.
void PutNote(OpenDocument& document, Page& page, Shape& note, const Rect& place, const Rect& box);

}  // namespace norvelis::drawing
