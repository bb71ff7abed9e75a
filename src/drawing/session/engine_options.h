#pragma once

#include <functional>
#include <optional>
#include <string>

namespace norvelis::drawing {

struct Document;

struct EngineOptions {
    /// Folder of the stencils and the template. Without it no engine can be created.
    std::string stencilFolder;
    /// Drawings saved below this folder are passing pictures of one that grows; all others get a copy that
    /// ends in .vsdx, for programs that go by the ending.
    std::string snapshotFolder;
    /// Prints all pages of a drawing, or one counted from 1; false when there is nothing to print on. Without
    /// it printing fails.
    std::function<bool(const Document& document, std::optional<int> page)> print;
    /// Runs what takes long and can not be divided (laying a page out, finding space for notes, writing a
    /// file) and returns when it is done: a window can stay alive meanwhile. The work may run in another
    /// thread as long as nobody else uses the engine. Without it the work is simply done.
    std::function<void(const std::function<void()>& work)> runInBackground{};
};

}  // namespace norvelis::drawing
