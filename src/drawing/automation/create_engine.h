#pragma once

#include <memory>

#include "drawing/session/engine_options.h"
#include "engine/drawing_engine.h"

namespace norvelis::drawing {

/// Our drawing engine. Stencils are read once for all drawings that it makes; everything else of a drawing
/// ends with its Application. Not for use by several threads.
std::unique_ptr<engine::DrawingEngine> MakeDrawingEngine(EngineOptions options);

}  // namespace norvelis::drawing
