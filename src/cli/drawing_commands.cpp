#include "cli/drawing_commands.h"

#include <cstdio>

#include "base/failure.h"
#include "base/paths.h"
#include "core/places.h"
#include "drawing/export/export.h"

namespace norvelis::cli {

namespace {

int ExportDrawing(const std::string& drawing, const std::string& out, int page) {
    const std::string from = AbsolutePath(drawing), to = AbsolutePath(out);
    drawing::render::Export(from, to, page);
    std::printf("%s\n", to.c_str());
    return kDone;
}

/// A stencil by its path, or by its name in the application folder, with or without the ending.
std::string FindStencil(const AppState& app, const std::string& name) {
    const std::string path = AbsolutePath(name);
    if (FileExists(path)) return path;
    for (const char* ending : {"", ".vss", ".vst"}) {
        const std::string delivered = app.AppPath(std::string(places::kStencils) + "\\" + name + ending);
        if (FileExists(delivered)) return delivered;
    }
    throw RuntimeFailure(FailureNumber::FileNotFound, name);
}

int DrawContactSheet(CommandContext& context, const std::string& name, const std::string& out) {
    const std::string to = AbsolutePath(out);
    drawing::render::ExportContactSheet(FindStencil(*context.app, name), to);
    std::printf("%s\n", to.c_str());
    return kDone;
}

void AddExport(CLI::App& program, CommandContext& context) {
    struct Options {
        std::string drawing, out;
        int page = 1;
    };
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("export", "Write a drawing as .svg, .png, .pdf or .vsdx");
    command->add_option("DRAWING", options->drawing, "Drawing file")->required();
    command->add_option("OUT", options->out, "File to write; its ending says the form")->required();
    command->add_option("--page", options->page, "Page of the drawing for .svg and .png, from 1")
        ->capture_default_str();
    command->callback([&context, options] {
        context.run = [options] { return ExportDrawing(options->drawing, options->out, options->page); };
    });
}

void AddStencil(CLI::App& program, CommandContext& context) {
    struct Options {
        std::string name, out;
    };
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("stencil", "Draw all masters of a stencil on one picture");
    command->add_option("NAME", options->name, "Stencil of the application folder, or a file")->required();
    command->add_option("OUT", options->out, "Picture to write (.png)")->required();
    command->callback([&context, options] {
        context.run = [&context, options] { return DrawContactSheet(context, options->name, options->out); };
    });
}

}  // namespace

void AddDrawingCommands(CLI::App& program, CommandContext& context) {
    AddDraw(program, context);
    AddExport(program, context);
    AddStencil(program, context);
    AddPrint(program, context);
    AddPublish(program, context);
    AddScheduleRun(program, context);
}

}  // namespace norvelis::cli
