#pragma once

#include <string>
#include <vector>

#include "drawing/render/scene.h"

namespace norvelis::drawing::render {

/// The pages of a drawing file, ready to be shown: our own and Visio's packages through the model, what the
/// package reader refuses through libvisio. RuntimeFailure 53 when the file is not there, 57 with the reason
/// when nobody can read it.
std::vector<Scene> OpenPages(const std::string& path);

/// The masters of a stencil file in the same way; the empty ones of our own show their name as sample text.
std::vector<Scene> OpenMasters(const std::string& path);

/// Qt paints and measures text only under an application object. Programs without screens call this once
/// before they draw; it does nothing where one exists.
void NeedFonts();

}  // namespace norvelis::drawing::render
