#include <cstdio>

#include "base/paths.h"
#include "base/text.h"
#include "base/whole_number.h"
#include "cli/drawing_commands.h"
#include "core/places.h"
#include "core/settings.h"
#include "diagram/draw_chosen.h"
#include "diagram/draw_commands.h"
#include "diagram/draw_preparation.h"
#include "diagram/page_layout.h"
#include "dictionary/records.h"
#include "dictionary/schemas.h"
#include "drawing/automation/create_engine.h"

namespace norvelis::cli {

namespace {

struct DrawRequest {
    std::string schema, record, out;
    bool separate = false;
    std::optional<RecordChoice> choice;
    int layout = 0;
    std::optional<bool> color;
    BoxMeaning meaning = BoxMeaning::None;
    bool linesByOwner = false, fresh = false;
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

std::string Joined(const std::vector<std::string>& parts, const char* between) {
    std::string text;
    for (const auto& part : parts) text += (text.empty() ? "" : between) + part;
    return text;
}

DrawOptions OptionsOf(const DrawRequest& request) {
    DrawOptions options;
    options.layout = request.layout;
    options.color = request.color;
    options.meaning = request.meaning;
    options.linesByOwner = request.linesByOwner;
    options.fresh = request.fresh;
    options.background = request.background;
    options.visible = false;
    if (!request.out.empty()) options.location = AbsolutePath(request.out);
    return options;
}

/// One draw: its state, and what it tells. A drawing that lacks something is no success for a script.
class Draw {
  public:
    Draw(CommandContext& context, const DrawRequest& request)
        : app_(*context.app),
          engine_(drawing::MakeDrawingEngine(
              {app_.AppPath(places::kStencils), app_.AppPath(places::kSnapshots), nullptr})),
          drawing_(app_, *app_.gConnection, *engine_, noScreen_) {
        drawing_.options = OptionsOf(request);
        drawing_.report = [this](const std::string& text) { reported_.push_back(text); };
    }

    int Schema(const std::string& schema) {
        if (schema.empty())
            return Finish(DrawNamelessSchema(drawing_, kNameless), FileOf(kNameless, kNameless));
        const DrawResult result = DrawVisioDiagramSingle(drawing_, schema, nullptr);
        if (result != DrawResult::NoEngine)
            reported_.pop_back();  // "Done Drawing", whether or not it is true.
        const int status = Finish(result, FileOf(schema, schema));
        if (const std::string hint = SizeHint(drawing_); status == kDone && !hint.empty())
            std::fprintf(stderr, "%s: \"norvelis-cli draw %s --by area\" draws a page for each area.\n",
                         hint.c_str(), schema.c_str());
        return status;
    }
    int Chosen(const std::string& schema, const RecordChoice& choice) {
        const DrawnFile drawn = DrawChosenRecords(drawing_, schema, choice);
        return drawn.file.empty() ? Refuse(reported_.front()) : Finish(drawn.result, drawn.file);
    }
    int Record(const std::string& schema, const std::string& record) {
        return Finish(DrawIsolatedRecord(drawing_, schema, record, false), FileOf(schema, record));
    }
    int Parents(const std::string& schema) {
        const std::string location = DrawingLocation(drawing_);
        drawing_.gDrawSchema = schema;
        const SeparateResult result = DrawVisioDiagramSeparateParent(drawing_, nullptr, false);
        if (result.noEngine) return Refuse(reported_.front());
        if (!result.notSaved.empty())
            return Refuse("these drawings could not be saved in " + location + ": " +
                          Joined(result.notSaved, ", ") + ". " + drawing_.notWritten.front());
        if (!drawing_.notWritten.empty()) return Refuse(Joined(drawing_.notWritten, "; "));
        if (!reported_.empty())
            return Refuse(reported_.front() + "; the drawings in " + location + " are not complete");
        std::printf("Done Drawing. Visio Files saved at folder:\n%s\n", location.c_str());
        return kDone;
    }

  private:
    std::string FileOf(const std::string& schema, const std::string& name) {
        return Resolve(DrawingLocation(drawing_) + "\\" + schema + "\\" + name + ".vsd");
    }
    int Finish(DrawResult result, const std::string& file) const {
        if (result == DrawResult::NoEngine) return Refuse(reported_.front());
        if (!drawing_.notWritten.empty()) return Refuse(Joined(drawing_.notWritten, "; "));
        if (!reported_.empty())
            return Refuse(reported_.front() + "; the drawing " + file + " is not complete");
        std::printf("Done Drawing. File saved as:%s\n", file.c_str());
        return kDone;
    }

    AppState& app_;
    std::unique_ptr<engine::DrawingEngine> engine_;
    DrawScreen noScreen_;
    DrawingState drawing_;
    std::vector<std::string> reported_;
};

int RunDraw(CommandContext& context, const DrawRequest& request) {
    context.OpenStore();
    AppState& app = *context.app;
    Connection& store = *app.gConnection;
    const auto schema = dictionary::StoredSchemaName(store, request.schema);
    if (!schema) return Refuse("there is no schema " + request.schema + " in the dictionary");
    if (request.seed) app.random = Random(*request.seed);

    Draw draw(context, request);
    if (request.separate) return draw.Parents(*schema);
    if (request.choice) return draw.Chosen(*schema, *request.choice);
    if (request.record.empty()) return draw.Schema(*schema);
    const Recordset record = dictionary::RecordIn(store, *schema, request.record);
    if (record.Eof()) return Refuse("there is no record " + request.record + " in schema " + *schema);
    return draw.Record(*schema, std::string(Trim(record.Text("Recordname"))));
}

/// The options of a smaller drawing. They do not go with `others`, which say what to draw in another way.
void AddChoice(CLI::App& command, DrawRequest& request, const std::vector<CLI::Option*>& others) {
    using Kind = RecordChoice::Kind;
    using Direction = RecordChoice::Direction;
    const auto choice = [&request]() -> RecordChoice& {
        return request.choice ? *request.choice : request.choice.emplace();
    };
    const auto named = [choice](Kind kind) {
        return [choice, kind](const std::string& name) {
            choice().kind = kind;
            choice().name = name;
        };
    };
    const std::string choose = "Smaller drawings";
    auto* around = command.add_option_function<std::string>("--around", named(Kind::Around),
                                                            "This record and those that sets lead to");
    auto* steps = command
                      .add_option_function<int>(
                          "--steps", [choice](int count) { choice().steps = count; },
                          "Around a record: this many sets at most (default: 1)")
                      ->check(CLI::PositiveNumber);
    const auto direction = [&](const char* option, Direction value, const char* help) {
        return command
            .add_flag_callback(
                option, [choice, value] { choice().direction = value; }, help)
            ->needs(around)
            ->group(choose);
    };
    auto* up = direction("--up", Direction::Up, "Around a record: its owners alone");
    auto* down = direction("--down", Direction::Down, "Around a record: its members alone");
    auto* both = direction("--both", Direction::Both, "Around a record: owners and members (default)");
    up->excludes(down)->excludes(both);
    down->excludes(both);
    auto* area =
        command.add_option_function<std::string>("--area", named(Kind::Area), "The records of this area");
    auto* by = command
                   .add_option_function<std::string>(
                       "--by", [choice](const std::string&) { choice().kind = Kind::ByArea; },
                       "\"area\": a page for each area")
                   ->check(CLI::IsMember({"area"}));
    auto* only = command.add_option_function<std::vector<std::string>>(
        "--only", [choice](const std::vector<std::string>& names) { choice().only = names; },
        "Of the records those of these names; * and ? stand for other characters: a,b,c*");
    auto* except = command.add_option_function<std::vector<std::string>>(
        "--except", [choice](const std::vector<std::string>& names) { choice().except = names; },
        "Of the records all but those of these names");
    steps->needs(around);
    around->excludes(area)->excludes(by);
    area->excludes(by);
    for (CLI::Option* names : {only, except}) names->delimiter(',')->allow_extra_args(false);
    for (CLI::Option* each : {around, steps, area, by, only, except}) {
        each->group(choose);
        for (CLI::Option* other : others) each->excludes(other);
    }
    for (CLI::Option* each : {around, area}) {
        each->check([](const std::string& name) { return name.empty() ? "the name is empty" : ""; });
    }
}

}  // namespace

void AddDraw(CLI::App& program, CommandContext& context) {
    struct Words {
        std::string layout, color, lines, background, seed;
    };
    const auto named = [](const std::string& name) { return name.empty() ? "the name is empty" : ""; };
    auto request = std::make_shared<DrawRequest>();
    auto words = std::make_shared<Words>();
    auto* command = program.add_subcommand("draw", "Draw a schema's Bachman diagram as a Visio drawing");
    command->add_option("SCHEMA", request->schema, "Schema of the dictionary")->required();
    auto* separate =
        command->add_flag("--separate", request->separate, "A file for each record that is an entry");
    auto* record = command->add_option("--record", request->record, "This record with all below it")
                       ->check(named)
                       ->excludes(separate);
    AddChoice(*command, *request, {separate, record});
    command
        ->add_option("--layout", words->layout,
                     "Default, RadialDefault, RadialRightAngle, RadialSimpleVH, TopToBottom, LeftToRight, "
                     "CircularSimpleHV or CircularDeep")
        ->check([request](const std::string& name) {
            const auto index = LayoutIndex(name);
            request->layout = index.value_or(0);
            return index ? std::string() : "there is no layout " + name;
        });
    command->add_flag(
        "--fresh", request->fresh,
        "Lay out without regard to the drawing that is replaced (default: boxes that were there "
        "keep their order and neighbourhood)");
    command
        ->add_option("--color", words->color,
                     "Boxes in colors (default: the setting DiagramColor), or in those of their area or "
                     "location mode, with a legend")
        ->check(CLI::IsMember({"on", "off", "area", "mode"}));
    command->add_option("--lines", words->lines, "\"owner\": lines of one owner look alike (default: random)")
        ->check(CLI::IsMember({"owner", "random"}));
    command->add_option("--background", words->background, "Name of a page background (default: the setting)")
        ->check([request](const std::string& name) {
            request->background = BackgroundNamed(name);
            return request->background->empty() ? "there is no background " + name : std::string();
        });
    command->add_option("--seed", words->seed, "A whole number; equal ones give equal drawings")
        ->check([request](const std::string& text) {
            request->seed = WholeNumber<std::uint64_t>(text);
            return request->seed ? std::string() : text + " is no seed";
        });
    command->add_option("--out", request->out, "Folder of the drawings (default: the setting visiolocation)")
        ->check(named);
    command->callback([&context, request, words] {
        if (words->color == "area") request->meaning = BoxMeaning::Area;
        if (words->color == "mode") request->meaning = BoxMeaning::LocationMode;
        if (!words->color.empty()) request->color = words->color == "on";
        request->linesByOwner = words->lines == "owner";
        context.run = [&context, request] { return RunDraw(context, *request); };
    });
}

}  // namespace norvelis::cli
