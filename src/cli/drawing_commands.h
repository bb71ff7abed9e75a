#pragma once

#include "cli/command.h"

namespace norvelis::cli {

void AddDrawingCommands(CLI::App& program, CommandContext& context);  ///< draw, export, stencil.
void AddDraw(CLI::App& program, CommandContext& context);

}  // namespace norvelis::cli
