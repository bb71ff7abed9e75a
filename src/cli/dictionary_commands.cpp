#include <cstdio>

#include "cli/command.h"
#include "cli/dump.h"
#include "core/settings.h"
#include "store/connection.h"

namespace norvelis::cli {

namespace {

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
    auto* dump = program.add_subcommand("dump", "Print the dictionary as one JSON object");
    auto* setting = program.add_subcommand("setting", "Show a setting, or set it");

    struct Options {
        std::string schema, name, value, value2;
        bool json = false;
    };
    auto options = std::make_shared<Options>();

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

    AddCopybook(program, context);
}

}  // namespace norvelis::cli
