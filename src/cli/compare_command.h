#pragma once

#include <functional>
#include <string>

#include "cli/command.h"
#include "compare/edition.h"

namespace norvelis::cli {

/// Draws the differences below the folder, empty for the one of the settings; gives the exit status.
using DrawDifferences = std::function<int(CommandContext& context, const compare::ComparedEditions& editions,
                                          const std::string& folder)>;

/// The command compare, which can draw only with `draw`.
void AddCompare(CLI::App& program, CommandContext& context, const DrawDifferences& draw);
void AddCompareCommand(CLI::App& program, CommandContext& context);  ///< Without drawing.

}  // namespace norvelis::cli
