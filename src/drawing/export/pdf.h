#pragma once

#include <string>
#include <vector>

#include "drawing/render/scene.h"

class QPrinter;

namespace norvelis::drawing::render {

/// The scenes as the pages of one PDF file, each page of its scene's size; hyperlinks can be followed, text
/// can be searched. Equal scenes give equal files.
std::string PdfText(const std::vector<Scene>& scenes);

}  // namespace norvelis::drawing::render
