#pragma once

#include <string>
#include <string_view>

#include "diagram/drawing_state.h"

// One box for each record, dropped at random on a square of ten inches; the layout of the page places it
// later.
namespace norvelis {

/// The record and all that is below it, depth first in the order of the member lists. A record met again is
/// not walked again, for all that hangs below it has its boxes.
void DrawRecordTree(DrawingState& drawing, const PageRef& page, const std::string& recordName);

/// One box. False when it is there already or the engine gave no shape; true for a record that the store does
/// not hold.
bool CreateRecordShape(DrawingState& drawing, const PageRef& page, const std::string& schema,
                       const std::string& recordName);

/// A box as wide and high as its text.
void SizeToText(engine::Shape& box);

/// The shape that a record has on the page; null when it has none.
ShapeRef ShapeOfRecord(const DrawingState& drawing, engine::Page& page, std::string_view recordName);

/// A note for each row of the drawn schema, of the kind "index", that leads to the record. Extraction writes
/// none; a store may hold them.
bool CreateIndexShapes(DrawingState& drawing, const PageRef& page, const std::string& recordName);

/// A shape of the flowchart stencil on the square from which the layout takes it; null when the engine gives
/// none.
ShapeRef DropAtRandom(DrawingState& drawing, const PageRef& page, const std::string& master);

/// Has lines and notes find the shape by the record's name. The first shape of a name stays.
void RememberShape(DrawingState& drawing, const std::string& name, engine::Shape& shape);

/// The master in the flowchart stencil for a step word; the first one for a word that is not known.
std::string GetStepMaster(std::string_view step);

}  // namespace norvelis
