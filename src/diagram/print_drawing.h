#pragma once

#include <string>

#include "core/app_state.h"
#include "engine/drawing_engine.h"

namespace norvelis {

/// Prints a saved drawing; what came of it is said in a box. `nothingToPrint` are the screen's words for no
/// file, or one that is not there.
void PrintDrawing(AppState& app, engine::DrawingEngine& drawingEngine, const std::string& file,
                  const std::string& nothingToPrint);

/// True when the document went to the printer, which is also reported; a person who cancels gets no box.
bool PrintDocument(Host& host, engine::Document& document);

}  // namespace norvelis
