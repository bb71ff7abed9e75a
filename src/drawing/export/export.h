#pragma once

#include <string>

#include "engine/shape_links.h"

namespace norvelis::drawing::render {

/// Writes a drawing file in another form, which the ending of `out` says: .svg and .png (one page, counted
/// from 1), .pdf (all pages), .vsdx (the whole drawing as our writer writes it). The target is whole or
/// untouched. RuntimeFailure 53 or 57 when the drawing can not be read, 9 when there is no such page, 5 for
/// another ending or for a drawing that can only be shown, 75 and the like when the target can not be
/// written.
void Export(const std::string& drawing, const std::string& out, int page = 1);

/// The first page of a drawing file as SVG in which these shapes lead elsewhere. RuntimeFailure as above.
std::string LinkedSvg(const std::string& drawing, const engine::ShapeLinks& links);

/// Writes the picture of all masters of a stencil.
void ExportContactSheet(const std::string& stencil, const std::string& out);

}  // namespace norvelis::drawing::render
