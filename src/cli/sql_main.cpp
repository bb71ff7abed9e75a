// norvelis-sql: the commands over SQL servers, which need the driver manager of the machine. norvelis-cli
// calls it for them.
#include "cli/command.h"
#include "cli/sql_commands.h"

int main(int argc, char** argv) {
    using namespace norvelis::cli;
    return RunProgram(argc, argv, {AddSqlCommands});
}
