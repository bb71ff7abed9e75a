#include <chrono>
#include <cstdio>

#include "cli/command.h"
#include "cli/dump.h"
#include "core/paths.h"
#include "extract/driver.h"
#include "extract/report.h"
#include "store/connection.h"
#include "store/settings.h"

namespace norvelis::cli {

namespace {

int Validate(const std::string& report) {
    const std::string path = AbsolutePath(report);
    if (!FileExists(path)) return Refuse("Report File :" + path + "\r\ndoes not exist. Please set it.");
    if (!ValidateReportFile(path))
        return Refuse("Invalid IDMS Report File :" + path + "\r\nAction terminated");
    std::printf("%s is a schema report\n", path.c_str());
    return kDone;
}

void PrintSummary(Connection& store, const std::string& schema, double seconds) {
    const auto count = [&](const std::string& table) {
        return store.Count("Select count(*) FROM " + table + " where schemaname =?", {schema});
    };
    const long sets = static_cast<long>(
        store.Select("Select distinct(set) FROM Connection_Details where schemaname =?", {schema})
            .RecordCount());
    const long indexes = static_cast<long>(
        store.Select("Select distinct(Recordname) FROM Index_Details where schemaname =?", {schema})
            .RecordCount());
    std::printf("Schema %s: %ld records, %ld fields, %ld sets, %ld indexes in %.2f seconds\n", schema.c_str(),
                count("Record_Details"), count("Record_layout"), sets, indexes, seconds);
}

int Extract(Context& context, const std::string& report, bool append) {
    context.OpenStore();
    AppState& app = *context.app;
    context.host.AnswerTo("Delete all dictionaries and extract report?", append ? Answer::No : Answer::Yes);
    setreportlocation(app, AbsolutePath(report));
    const auto start = std::chrono::steady_clock::now();
    context.host.PrintBoxes(false);
    const bool done = process_Classic_Extract_Report(app, InteractiveDriver(app, {}));
    if (!done) return Refuse(context.host.LastText());
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    std::printf("%s\n", WithNewlines(context.host.LastText()).c_str());
    PrintSummary(*app.gConnection, app.gSchemaName, elapsed.count());
    return kDone;
}

int ShowSetting(Context& context, const std::string& name, bool json) {
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

void AddDictionaryCommands(CLI::App& program, Context& context) {
    auto* validate = program.add_subcommand("validate", "Tell whether a file is a schema report");
    auto* extract = program.add_subcommand("extract", "Read a schema report into the dictionary");
    auto* dump = program.add_subcommand("dump", "Print the dictionary as one JSON object");
    auto* setting = program.add_subcommand("setting", "Show a setting, or set it");

    struct Options {
        std::string report, schema, name;
        std::vector<std::string> values;
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
    setting->add_option("VALUE", options->values, "New value, and a second one where the setting has two")
        ->expected(0, 2);
    setting->add_flag("--json", options->json, "As a JSON object");
    setting->callback([&context, options] {
        context.run = [&context, options]() -> int {
            context.OpenStore();
            const auto& values = options->values;
            if (values.empty()) return ShowSetting(context, options->name, options->json);
            WriteSetting(*context.app, options->name, values[0],
                         values.size() > 1 ? std::optional<std::string_view>(values[1]) : std::nullopt);
            return kDone;
        };
    });
}

}  // namespace norvelis::cli
