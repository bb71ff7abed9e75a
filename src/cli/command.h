#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>

#include "core/app_state.h"
#include "core/console_host.h"

// How a command of norvelis-cli is put together: it adds its subcommand with options, and what it does as a
// function that runs once all options are read and gives the exit status.
namespace norvelis::cli {

enum ExitStatus { kDone = 0, kRefused = 1, kWrongUsage = 2 };

struct CommandContext {
    ConsoleHost host;
    SystemClock clock;
    std::unique_ptr<AppState> app;  ///< There when a command runs.
    std::function<int()> run;       ///< Set by the command that was named.
    char** arguments = nullptr;     ///< Of the program, as it was called.

    /// Opens the dictionary store of the application folder as gConnection.
    void OpenStore();
};

/// A refusal with its reason in one line on standard error.
int Refuse(const std::string& reason);

/// A text of the system in one line: its line breaks become blanks.
std::string OneLine(const std::string& text);
/// With the line ends that a terminal wants.
std::string WithNewlines(const std::string& text);

std::string AbsolutePath(const std::string& path);

/// The bytes of the file, of standard input for "-".
std::string ReadInput(const std::string& path);

void AddReportCommands(CLI::App& program, CommandContext& context);      ///< validate, extract.
void AddStoreCommands(CLI::App& program, CommandContext& context);       ///< store create, store restore.
void AddDictionaryCommands(CLI::App& program, CommandContext& context);  ///< dump, setting, copybook.
void AddBrowseCommands(CLI::App& program, CommandContext& context);      ///< tree, find, list.
void AddRecordList(CLI::App& program, CommandContext& context);
void AddCopybook(CLI::App& program, CommandContext& context);
void AddSqlProgram(CLI::App& program, CommandContext& context);  ///< sql, which norvelis-sql then does.

using AddCommands = void (*)(CLI::App& program, CommandContext& context);

/// A program of these commands, from its arguments to its exit status. What they do not understand goes to
/// the program of the name `fuller` beside this one, which knows more of them, where there is one.
int RunProgram(int argc, char** argv, std::initializer_list<AddCommands> commands,
               const char* fuller = nullptr);

}  // namespace norvelis::cli
