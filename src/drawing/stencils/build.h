#pragma once

#include <memory>

#include "drawing/model/document.h"
#include "drawing/stencils/definition.h"
#include "drawing/text/fonts.h"

namespace norvelis::drawing::stencils {

/// The stencil as a document, each master on a page of its own size, all cells evaluated. RuntimeFailure 5
/// with the cell's name when a definition names a cell that there is not, or gives it what is no formula.
std::unique_ptr<Document> BuildStencil(FontLibrary& fonts, const StencilDefinition& definition);

/// The template of new drawings: one empty page, US letter lying.
std::unique_ptr<Document> BuildTemplate();

}  // namespace norvelis::drawing::stencils
