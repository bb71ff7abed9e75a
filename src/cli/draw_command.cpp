#include <cstdio>

#include "cli/drawing_commands.h"
#include "core/paths.h"
#include "core/text.h"
#include "diagram/draw_commands.h"
#include "diagram/page_layout.h"
#include "drawing/engine/drawing_engine.h"
#include "store/settings.h"

namespace norvelis::cli {

namespace {

struct DrawRequest {
    std::string schema, record, out;
    bool separate = false;
    int layout = 0;
    std::optional<bool> color;
    std::optional<std::string> background;
    std::optional<std::uint64_t> seed;
};

/// A background by its full name or without the word in front; empty when there is none of that name.
std::string BackgroundNamed(const std::string& name) {
    for (const std::string_view known : kBackgroundNames) {
        const std::string_view bare = known.substr(known.find(' ') + 1);
        if (EqualIgnoringCase(known, name) || EqualIgnoringCase(bare, name)) return std::string(known);
    }
    return {};
}

std::unique_ptr<engine::DrawingEngine> EngineOf(const AppState& app) {
    return drawing::MakeDrawingEngine({app.AppPath("\\Stencils"), app.AppPath("\\Temp"), nullptr});
}

DrawOptions OptionsOf(const DrawRequest& request) {
    DrawOptions options;
    options.layout = request.layout;
    options.color = request.color;
    options.background = request.background;
    if (!request.out.empty()) options.location = AbsolutePath(request.out);
    return options;
}

bool HasRow(AppState& app, std::string_view statement, std::initializer_list<std::string_view> values) {
    return app.gConnection->Count(statement, values) > 0;
}

/// What the command says at its end: the system's last word, or a refusal.
int Finish(Context& context, DrawResult result, const std::string& file) {
    switch (result) {
        case DrawResult::Saved:
            std::printf("%s\n", WithNewlines(context.host.LastText()).c_str());
            return kDone;
        case DrawResult::NotSaved:
            return Refuse("the drawing could not be saved as " + file);
        case DrawResult::NoEngine:
            return Refuse(context.host.LastText());
    }
    return kRefused;
}

int DrawSchema(Context& context, DrawingState& drawing, const std::string& schema) {
    const DrawResult result = DrawVisioDiagramSingle(drawing, schema, nullptr);
    return Finish(context, result,
                  NativePath(DrawingLocation(drawing) + "\\" + schema + "\\" + schema + ".vsd"));
}

int DrawOneRecord(Context& context, DrawingState& drawing, const std::string& schema,
                  const std::string& record) {
    const std::string file = NativePath(DrawingLocation(drawing) + "\\" + schema + "\\" + record + ".vsd");
    const DrawResult result = DrawIsolatedRecord(drawing, schema, record, false);
    if (result == DrawResult::Saved) context.host.MessageBox("Done Drawing. File saved as:" + file);
    return Finish(context, result, file);
}

int DrawSeparate(Context& context, DrawingState& drawing, const std::string& schema) {
    const std::string location = DrawingLocation(drawing);
    drawing.gDrawSchema = schema;
    const SeparateResult result = DrawVisioDiagramSeparateParent(drawing, nullptr, false);
    if (result.noEngine) return Refuse(context.host.LastText());
    if (!result.notSaved.empty()) {
        std::string names;
        for (const auto& name : result.notSaved) names += (names.empty() ? "" : ", ") + name;
        return Refuse("these drawings could not be saved in " + location + ": " + names);
    }
    std::printf("Done Drawing. Visio Files saved at folder:\n%s\n", location.c_str());
    return kDone;
}

int Draw(Context& context, const DrawRequest& request) {
    context.OpenStore();
    AppState& app = *context.app;
    const std::string& schema = request.schema;
    if (!HasRow(app, "Select count(*) FROM Record_Details where schemaname = ?", {schema}))
        return Refuse("there is no schema " + schema + " in the dictionary");
    if (!request.record.empty() &&
        !HasRow(app, "Select count(*) FROM Record_Details where schemaname = ? and recordname = ?",
                {schema, request.record}))
        return Refuse("there is no record " + request.record + " in schema " + schema);
    if (request.seed) app.random = Random(*request.seed);
    context.host.AnswerTo("Want to View While Norvelis is drawing", Answer::No);
    context.host.PrintBoxes(false);

    const auto engine = EngineOf(app);
    DrawScreen noScreen;
    DrawingState drawing(app, *app.gConnection, *engine, noScreen);
    drawing.options = OptionsOf(request);
    if (request.separate) return DrawSeparate(context, drawing, schema);
    if (!request.record.empty()) return DrawOneRecord(context, drawing, schema, request.record);
    return DrawSchema(context, drawing, schema);
}

}  // namespace

void AddDraw(CLI::App& program, Context& context) {
    struct Words {
        std::string layout, color, background;
        std::uint64_t seed = 0;
    };
    auto request = std::make_shared<DrawRequest>();
    auto words = std::make_shared<Words>();
    auto* command = program.add_subcommand("draw", "Draw a schema's Bachman diagram as a Visio drawing");
    command->add_option("SCHEMA", request->schema, "Schema of the dictionary")->required();
    auto* separate =
        command->add_flag("--separate", request->separate, "A file for each record that is an entry");
    command->add_option("--record", request->record, "This record with all below it")->excludes(separate);
    command
        ->add_option(
            "--layout", words->layout,
            "Default Layout, RadialDefault, RadialRightAngle, RadialSimpleVH, TopToBottom, LeftToRight, "
            "CircularSimpleHV or CircularDeep")
        ->check([request](const std::string& name) {
            const auto index = LayoutIndex(name);
            request->layout = index.value_or(0);
            return index ? std::string() : "there is no layout " + name;
        });
    command->add_option("--color", words->color, "Boxes in colours (default: the setting DiagramColor)")
        ->check(CLI::IsMember({"on", "off"}));
    command->add_option("--background", words->background, "Name of a page background (default: the setting)")
        ->check([request](const std::string& name) {
            request->background = BackgroundNamed(name);
            return request->background->empty() ? "there is no background " + name : std::string();
        });
    auto* seed = command->add_option("--seed", words->seed, "Equal seeds give equal drawings");
    command->add_option("--out", request->out, "Folder of the drawings (default: the setting visiolocation)");
    command->callback([&context, request, words, seed] {
        if (!words->color.empty()) request->color = words->color == "on";
        if (seed->count() > 0) request->seed = words->seed;
        context.run = [&context, request] { return Draw(context, *request); };
    });
}

}  // namespace norvelis::cli
