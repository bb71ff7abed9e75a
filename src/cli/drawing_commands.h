#pragma once

#include "cli/command.h"

namespace norvelis::cli {

void AddDrawingCommands(CLI::App& program, Context& context);  ///< export, stencil.

}  // namespace norvelis::cli
