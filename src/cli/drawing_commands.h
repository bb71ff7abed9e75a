#pragma once

#include "cli/command.h"

namespace norvelis::cli {

void AddDrawingCommands(CLI::App& program, Context& context);  ///< draw, export, stencil.
void AddDraw(CLI::App& program, Context& context);

}  // namespace norvelis::cli
