#include <cstdio>

#include "cli/compare_command.h"
#include "cli/drawing_commands.h"
#include "commands/difference_drawing.h"
#include "core/places.h"
#include "drawing/automation/create_engine.h"

namespace norvelis::cli {

namespace {

int Draw(CommandContext& context, const compare::ComparedEditions& editions, const std::string& folder) {
    AppState& app = *context.app;
    const auto engine = drawing::MakeDrawingEngine(
        {app.AppPath(places::kStencils), app.AppPath(places::kSnapshots), nullptr});
    const std::optional<std::string> location =
        folder.empty() ? std::nullopt : std::optional(AbsolutePath(folder));
    const auto result = commands::DrawDifferences(app, *engine, editions, location);
    if (!result.words.empty()) return Refuse(result.words.front());
    std::fprintf(stderr, "Done Drawing. File saved as:%s\n", result.drawn.file.c_str());
    return kDone;
}

}  // namespace

void AddCompareAndDraw(CLI::App& program, CommandContext& context) {
    AddCompare(program, context, Draw);
}

}  // namespace norvelis::cli
