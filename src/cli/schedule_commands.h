#pragma once

#include "cli/command.h"

namespace norvelis::cli {

void AddScheduleCommands(CLI::App& program,
                         CommandContext& context);                 ///< schedule, with next, add and these:
void AddJobCommands(CLI::App& schedule, CommandContext& context);  ///< list, show, update, delete, again.
void AddHistory(CLI::App& schedule, CommandContext& context);      ///< history.
void AddSimulate(CLI::App& schedule, CommandContext& context);     ///< simulate, which help does not show.

}  // namespace norvelis::cli
