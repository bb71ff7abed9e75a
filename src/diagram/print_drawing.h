#pragma once

#include <string>

#include "core/app_state.h"
#include "engine/drawing_engine.h"

namespace norvelis {

/// Prints a saved drawing; what came of it is said in a box. `nothingToPrint` are the screen's words for no
/// file, or one that is not there.
void PrintDrawing(AppState& app, engine::DrawingEngine& drawingEngine, const std::string& file,
                  const std::string& nothingToPrint);

/// The published numbers of what a print takes.
enum class PrintMode { Document = 1, EveryNthPage = 2, OddPages = 3 };

/// True when the document, or each of the pages that the mode takes, went to the printer, which is also
/// reported; a person who cancels gets no box. `step` is from 1 and for EveryNthPage alone.
bool PrintDocument(Host& host, engine::Document& document, PrintMode mode = PrintMode::Document,
                   int step = 1);

/// Prints one page, counted from 1. A number beyond the last page prints nothing and is no failure.
bool PrintPage(engine::Document& document, int page);

}  // namespace norvelis
