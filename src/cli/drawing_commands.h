#pragma once

#include "cli/command.h"

namespace norvelis::cli {

void AddDrawingCommands(
    CLI::App& program,
    CommandContext& context);  ///< draw, export, stencil, print, publish, and run for schedule.
void AddDraw(CLI::App& program, CommandContext& context);
void AddCompareAndDraw(CLI::App& program, CommandContext& context);  ///< compare, with drawing.
void AddPublish(CLI::App& program, CommandContext& context);
void AddPrint(CLI::App& program, CommandContext& context);
void AddScheduleRun(CLI::App& program, CommandContext& context);

}  // namespace norvelis::cli
