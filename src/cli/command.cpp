#include "cli/command.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <new>

#include "base/failure.h"
#include "base/paths.h"
#include "core/places.h"
#include "store/connection.h"

namespace norvelis::cli {

void CommandContext::OpenStore() {
    app->gConnection = Connection::Open(ConnectionString(app->AppPath(places::kStore)));
}

int Refuse(const std::string& reason) {
    std::fprintf(stderr, "norvelis-cli: %s\n", OneLine(reason).c_str());
    return kRefused;
}

std::string OneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        if (c == '\r') continue;
        line += c == '\n' ? ' ' : c;
    }
    return line;
}

std::string WithNewlines(const std::string& text) {
    std::string lines;
    for (const char c : text) {
        if (c != '\r') lines += c;
    }
    return lines;
}

std::string AbsolutePath(const std::string& path) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(NativePath(path), error);
    return error ? path : absolute.lexically_normal().string();
}

std::string ReadInput(const std::string& path) {
    if (path == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
    return ReadFile(AbsolutePath(path));
}

namespace {

std::string OwnFolder() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path().string();
}

/// Goes on as the program of this name beside this one; returns only where there is none.
void BecomeProgram(const char* name, char** arguments) {
    execv((OwnFolder() + "/" + name).c_str(), arguments);
}

int Run(int argc, char** argv, std::initializer_list<AddCommands> commands, const char* fuller) {
    CLI::App program{"Norvelis without a screen: schema reports, dictionary, drawings."};
    program.require_subcommand(1);
    std::string folder;
    program.add_option("--app", folder, "Application folder (default: the folder of this program)");
    CommandContext context;
    context.arguments = argv;
    for (const auto add : commands) add(program, context);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (fuller != nullptr) BecomeProgram(fuller, argv);
        return program.exit(error) == 0 ? kDone : kWrongUsage;
    }
    if (folder.empty()) folder = OwnFolder();
    if (!FolderExists(folder)) return Refuse("the application folder " + folder + " does not exist");
    context.app =
        std::make_unique<AppState>(AbsolutePath(folder), context.host, context.clock, Random::FromDevice());
    const int status = context.run();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) return Refuse("the output cannot be written");
    return status;
}

}  // namespace

void AddSqlProgram(CLI::App& program, CommandContext& context) {
    auto* sql = program.add_subcommand("sql", "SQL servers: sources, tables, saved statements, conversion");
    // Whatever follows is for the other program, its help too.
    sql->prefix_command()->set_help_flag();
    sql->callback([&context] {
        context.run = [&context] {
            BecomeProgram("norvelis-sql", context.arguments);
            return Refuse("the program norvelis-sql is missing in " + OwnFolder());
        };
    });
}

int RunProgram(int argc, char** argv, std::initializer_list<AddCommands> commands, const char* fuller) {
    // A write beyond the limit of file sizes then fails as on a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return Run(argc, argv, commands, fuller);
    } catch (const RuntimeFailure& failure) {
        return Refuse("Run-time error '" + std::to_string(static_cast<int>(failure.Number())) +
                      "': " + failure.what());
    } catch (const std::bad_alloc&) {
        return Refuse("Run-time error '7': Out of memory");
    } catch (const std::exception& failure) {
        return Refuse(failure.what());
    }
}

}  // namespace norvelis::cli
