#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "engine/drawing_engine.h"

// What every step of a drawing asks of the engine.
namespace norvelis {

/// Takes a text for the person who ordered the drawing: to a message box, or to a log when nobody is there.
using Reporter = std::function<void(const std::string& text)>;

/// The stencil of this bare file name, opened on first use and used again afterwards. When the engine has
/// none, that is reported and the result is null.
engine::Ref<engine::Document> GetStencil(const Reporter& report,
                                         const engine::Ref<engine::Documents>& documents,
                                         const std::string& fileName);

/// A new shape of a stencil's master with its pin at x, y (inches). Null, and nothing reported, when the
/// stencil has no such master or the page refuses.
engine::Ref<engine::Shape> DropShape(const Reporter& report, const engine::Ref<engine::Page>& page,
                                     const std::string& stencil, const std::string& master, double x,
                                     double y);

/// The part of a group that has this name; null when there is none.
engine::Ref<engine::Shape> PartOf(engine::Shape& group, std::string_view name);

/// Any text as a string formula: its double quotes doubled, one more at each end.
std::string QuoteFormula(std::string_view text);

}  // namespace norvelis
