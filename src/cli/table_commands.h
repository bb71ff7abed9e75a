#pragma once

#include <string>

#include "cli/command.h"
#include "sqlconv/kept_tables.h"

namespace norvelis::cli {

void AddTableCommands(CLI::App& sql, CommandContext& context);  ///< script, types and options of "sql".

/// The options of the file, or those that hold without one when the path is empty. What is wrong in it goes
/// to standard error, too; the rest holds.
tables::Options OptionsIn(const std::string& path, const std::string& schema);

}  // namespace norvelis::cli
