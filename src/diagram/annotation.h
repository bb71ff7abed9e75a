#pragma once

#include <string>

#include "diagram/drawing_state.h"

// Notes beside the boxes: what an index sorts its records by.
namespace norvelis {

/// Has the next layout of the page keep room for the notes that AnnotateShapes will make.
void ReserveNotes(const DrawingState& drawing, engine::Page& page);

/// A note for each row of Index_Details, up and to the right of the record that is its member.
void AnnotateShapes(DrawingState& drawing, const PageRef& page);

/// One note, its pin at x, y (inches), unless one with the same text is there already.
void SetShapetext(DrawingState& drawing, const PageRef& page, engine::Shape& annotated, double x, double y,
                  const std::string& text);

}  // namespace norvelis
