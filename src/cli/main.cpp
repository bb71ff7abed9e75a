// norvelis-cli: the work of Norvelis without a screen.
#include <cstdio>

#include "cli/command.h"
#include "cli/drawing_commands.h"
#include "core/failure.h"
#include "core/paths.h"
#include "store/connection.h"

namespace norvelis::cli {

void Context::OpenStore() {
    app->gConnection = Connection::Open(ConnectionString(app->AppPath("\\Database\\records.mdb")));
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

namespace {

int Run(int argc, char** argv) {
    CLI::App program{"Norvelis without a screen: schema reports, dictionary, drawings."};
    program.require_subcommand(1);
    std::string folder;
    program.add_option("--app", folder, "Application folder (default: the folder of this program)");
    Context context;
    AddDictionaryCommands(program, context);
    AddBrowseCommands(program, context);
    AddDrawingCommands(program, context);
    try {
        program.parse(argc, argv);
    } catch (const CLI::CallForHelp& help) {
        program.exit(help);
        return kDone;
    } catch (const CLI::ParseError& error) {
        program.exit(error);
        return kWrongUsage;
    }
    if (folder.empty()) {
        std::error_code ignored;
        folder = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path().string();
    }
    if (!FolderExists(folder)) return Refuse("the application folder " + folder + " does not exist");
    context.app =
        std::make_unique<AppState>(AbsolutePath(folder), context.host, context.clock, Random::FromDevice());
    return context.run();
}

}  // namespace

}  // namespace norvelis::cli

int main(int argc, char** argv) {
    using namespace norvelis;
    try {
        return cli::Run(argc, argv);
    } catch (const RuntimeFailure& failure) {
        return cli::Refuse("Run-time error '" + std::to_string(static_cast<int>(failure.Number())) +
                           "': " + failure.what());
    } catch (const std::exception& failure) {
        return cli::Refuse(failure.what());
    }
}
