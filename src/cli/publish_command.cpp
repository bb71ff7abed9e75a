#include <cstdio>

#include "base/paths.h"
#include "cli/drawing_commands.h"
#include "commands/publish_commands.h"
#include "core/places.h"
#include "dictionary/schemas.h"
#include "drawing/automation/create_engine.h"
#include "drawing/export/export.h"

namespace norvelis::cli {

namespace {

struct Options {
    std::string schema, out;
};

int RunPublish(CommandContext& context, const Options& options) {
    context.OpenStore();
    AppState& app = *context.app;
    const auto schema = dictionary::StoredSchemaName(*app.gConnection, options.schema);
    if (!schema) return Refuse("there is no schema " + options.schema + " in the dictionary");
    const auto engine = drawing::MakeDrawingEngine(
        {app.AppPath(places::kStencils), app.AppPath(places::kSnapshots), nullptr});
    const commands::Published published = commands::PublishSchema(app, {*engine, drawing::render::LinkedSvg},
                                                                  *schema, AbsolutePath(options.out));
    std::printf("%s\n", published.page.c_str());
    if (published.missing.empty()) return kDone;
    return Refuse(published.missing.front() + "; the drawing of the page is not complete");
}

}  // namespace

void AddPublish(CLI::App& program, CommandContext& context) {
    auto options = std::make_shared<Options>();
    auto* command = program.add_subcommand("publish", "Write a schema as a page for the browser");
    command->add_option("SCHEMA", options->schema, "Schema of the dictionary")->required();
    command
        ->add_option("--out", options->out,
                     "Folder of the page: a new one, an empty one, or that of an edition")
        ->required()
        ->check([](const std::string& name) { return name.empty() ? "the name is empty" : ""; });
    command->callback(
        [&context, options] { context.run = [&context, options] { return RunPublish(context, *options); }; });
}

}  // namespace norvelis::cli
