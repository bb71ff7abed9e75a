#pragma once

#include <memory>

#include "drawing/model/document.h"
#include "drawing/stencils/definition.h"

namespace norvelis::drawing::stencils {

/// The stencil as a document, each master on a page of its own size, all cells evaluated. RuntimeFailure 5 with the
/// cell's name when a definition names a cell that there is not.
std::unique_ptr<Document> BuildStencil(const StencilDefinition& definition);

/// The template of new drawings: one empty page, US letter lying.
std::unique_ptr<Document> BuildTemplate();

}  // namespace norvelis::drawing::stencils
