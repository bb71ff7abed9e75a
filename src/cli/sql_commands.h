#pragma once

#include "cli/command.h"

namespace norvelis::cli {

void AddSqlCommands(CLI::App& program, CommandContext& context);  ///< sql and its own commands.

}  // namespace norvelis::cli
