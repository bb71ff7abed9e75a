#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "engine/drawing_engine.h"

namespace norvelis::drawing {

struct Document;

struct EngineOptions {
    /// Folder of the stencils and the template. Without it no engine can be created.
    std::string stencilFolder;
    /// Drawings saved below this folder are passing pictures of one that grows; all others get a twin that
    /// ends in .vsdx, for programs that go by the ending.
    std::string snapshotFolder;
    /// Prints all pages of a drawing, or one counted from 1; false when there is nothing to print on. Without
    /// it printing fails.
    std::function<bool(const Document& document, std::optional<int> page)> print;
    /// Runs what takes long in one piece (laying a page out, finding room for notes, writing a file) and
    /// returns when it is done: a window can stay alive meanwhile. The work may run in another thread as long
    /// as nobody else uses the engine. Without it the work is simply done.
    std::function<void(const std::function<void()>& work)> runAside{};
};

/// Our drawing engine. Stencils are read once for all drawings that it makes; everything else of a drawing
/// ends with its Application. Not for use by several threads.
std::unique_ptr<engine::DrawingEngine> MakeDrawingEngine(EngineOptions options);

}  // namespace norvelis::drawing
