#pragma once

#include "core/host.h"
#include "engine/drawing_engine.h"

namespace norvelis {

/// The published numbers of what a print takes.
enum class PrintMode { Document = 1, EveryNthPage = 2, OddPages = 3 };

/// True when the document, or each of the pages that the mode takes, went to the printer, which is also
/// reported; a person who cancels gets no box. `step` is from 1 and for EveryNthPage alone.
bool PrintDocument(Host& host, engine::Document& document, PrintMode mode = PrintMode::Document,
                   int step = 1);

/// Prints one page, counted from 1. A number beyond the last page prints nothing and is no failure.
bool PrintPage(engine::Document& document, int page);

}  // namespace norvelis
