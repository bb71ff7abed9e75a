// norvelis-draw: all commands, those that draw included. norvelis-cli calls it for what it does not know
// itself.
#include "cli/command.h"
#include "cli/drawing_commands.h"
#include "cli/schedule_commands.h"

int main(int argc, char** argv) {
    using namespace norvelis::cli;
    return RunProgram(argc, argv,
                      {AddReportCommands, AddStoreCommands, AddDictionaryCommands, AddBrowseCommands,
                       AddCompareAndDraw, AddScheduleCommands, AddDrawingCommands, AddSqlProgram});
}
