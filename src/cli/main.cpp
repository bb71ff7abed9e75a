// norvelis-cli: the work of Norvelis without a screen. The drawing commands need libraries that are several
// times as large as the rest, so they are in a program of their own.
#include "cli/command.h"
#include "cli/compare_command.h"
#include "cli/schedule_commands.h"

int main(int argc, char** argv) {
    using namespace norvelis::cli;
    return RunProgram(argc, argv,
                      {AddReportCommands, AddStoreCommands, AddDictionaryCommands, AddBrowseCommands,
                       AddCompareCommand, AddScheduleCommands, AddSqlProgram},
                      "norvelis-draw");
}
