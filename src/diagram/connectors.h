#pragma once

#include <string>

#include "diagram/drawing_state.h"

// One labelled line for each set between two records of the drawing, glued to both boxes, so that it follows
// them.
namespace norvelis {

/// All rows of Connection_Details, owners and members in order of their names; a row of another schema, or
/// whose owner or member has no box, or whose both are on other pages, is passed over. Two sets between the
/// same two records are two lines.
void ConnectAllShapes(DrawingState& drawing, engine::Page& page);

/// One line from the owner to the member, null when the engine refuses it. An empty label becomes the two
/// names.
ShapeRef ConnectTwoShapes(DrawingState& drawing, const ShapeRef& from, const ShapeRef& to,
                          const std::string& label);

/// The labels of all lines in red and blue.
void FormatConnectorLabels(engine::Page& page);

}  // namespace norvelis
