#include <chrono>
#include <cstdio>

#include "cli/command.h"
#include "cli/dump.h"
#include "core/settings.h"
#include "extract/driver.h"
#include "store/connection.h"

namespace norvelis::cli {

namespace {

int Validate(const std::string& report) {
    const std::string path = AbsolutePath(report);
    const ReportCheck check = ValidateReportFile(path).check;
    if (check == ReportCheck::NoReport)
        return Refuse("Invalid IDMS Report File :" + path + "\r\nAction terminated");
    if (check != ReportCheck::Valid)
        return Refuse("Report File :" + path + "\r\ndoes not exist. Please set it.");
    std::printf("%s is a schema report\n", path.c_str());
    return kDone;
}

int Extract(CommandContext& context, const std::string& report, bool append) {
    context.OpenStore();
    AppState& app = *context.app;
    context.host.AnswerTo("Delete all dictionaries and extract report?", append ? Answer::No : Answer::Yes);
    setreportlocation(app, AbsolutePath(report));
    const auto start = std::chrono::steady_clock::now();
    context.host.PrintBoxes(false);
    const auto counts = process_Classic_Extract_Report(app, InteractiveDriver(app, {}),
                                                       ValidateReportFile(getreportlocation(app)));
    if (!counts) return Refuse(context.host.LastText());
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    std::printf("%s\n", WithNewlines(context.host.LastText()).c_str());
    std::printf("Schema %s: %zu records, %zu fields, %zu sets, %zu indexes in %.2f seconds\n",
                app.gSchemaName.c_str(), counts->records, counts->fields, counts->sets, counts->indexes,
                elapsed.count());
    return kDone;
}

int ShowSetting(CommandContext& context, const std::string& name, bool json) {
    const auto setting = ReadSetting(*context.app, name);
    if (!setting) return Refuse("there is no setting " + name);
    if (json) {
        std::printf("%s\n", SettingJson(name, *setting).c_str());
    } else {
        std::printf("%s\n", setting->value.c_str());
        if (!setting->value2.empty()) std::printf("%s\n", setting->value2.c_str());
    }
    return kDone;
}

}  // namespace

void AddDictionaryCommands(CLI::App& program, CommandContext& context) {
    auto* validate = program.add_subcommand("validate", "Check whether a file is a schema report");
    auto* extract = program.add_subcommand("extract", "Read a schema report into the dictionary");
    auto* dump = program.add_subcommand("dump", "Print the dictionary as one JSON object");
    auto* setting = program.add_subcommand("setting", "Show a setting, or set it");

    struct Options {
        std::string report, schema, name, value, value2;
        bool append = false, json = false;
    };
    auto options = std::make_shared<Options>();

    validate->add_option("REPORT", options->report, "The file")->required();
    validate->callback(
        [&context, options] { context.run = [options] { return Validate(options->report); }; });

    extract->add_option("REPORT", options->report, "The schema report")->required();
    extract->add_flag("--append", options->append, "Keep the other schemas in the dictionary");
    extract->callback([&context, options] {
        context.run = [&context, options] { return Extract(context, options->report, options->append); };
    });

    dump->add_option("--schema", options->schema, "Rows of this schema only");
    dump->callback([&context, options, dump] {
        const bool one = dump->count("--schema") > 0;
        context.run = [&context, options, one] {
            context.OpenStore();
            PrintDump(*context.app->gConnection, one ? std::optional(options->schema) : std::nullopt);
            return kDone;
        };
    });

    setting->add_option("NAME", options->name, "Name of the setting")->required();
    auto* value = setting->add_option("VALUE", options->value, "New value");
    auto* value2 =
        setting->add_option("VALUE2", options->value2, "New second value, where the setting has two");
    setting->add_flag("--json", options->json, "As a JSON object");
    setting->callback([&context, options, value, value2] {
        const bool set = value->count() > 0, both = value2->count() > 0;
        context.run = [&context, options, set, both]() -> int {
            context.OpenStore();
            if (!set) return ShowSetting(context, options->name, options->json);
            WriteSetting(*context.app, options->name, options->value,
                         both ? std::optional<std::string_view>(options->value2) : std::nullopt);
            return kDone;
        };
    });
}

}  // namespace norvelis::cli
