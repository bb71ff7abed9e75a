#include "cli/compare_command.h"

#include <cstdio>

#include "base/paths.h"
#include "cli/json_output.h"
#include "commands/compare_commands.h"
#include "compare/comparison_page.h"
#include "compare/comparison_text.h"
#include "core/places.h"

namespace norvelis::cli {

namespace {

using Json = nlohmann::ordered_json;

struct CompareOptions {
    std::string former, present, html, out;
    bool json = false, draw = false;
};

Json EditionJson(const compare::Edition& edition) {
    Json findings = Json::array();
    for (const auto& finding : edition.findings) {
        findings.push_back({{"severity", finding.severity},
                            {"kind", finding.kind},
                            {"line", finding.line},
                            {"subject", finding.subject},
                            {"reason", finding.reason},
                            {"remedy", finding.remedy}});
    }
    const auto& schema = edition.contents;
    return {{"source", edition.source},  {"from", edition.isReport ? "report" : "dictionary"},
            {"schema", schema.name},     {"release", schema.release},
            {"version", schema.version}, {"date", schema.date},
            {"findings", findings}};
}

void PrintJsonOf(const compare::ComparedEditions& editions) {
    Json differences = Json::array();
    for (const compare::Difference& each : editions.differences) {
        Json values = Json::array();
        for (const auto& value : each.values)
            values.push_back({{"what", value.what}, {"former", value.former}, {"present", value.present}});
        differences.push_back({{"kind", NameOf(each.kind)},
                               {"change", NameOf(each.change)},
                               {"name", each.name},
                               {"in", each.where},
                               {"values", values}});
    }
    PrintJson({{"former", EditionJson(editions.former)},
               {"present", EditionJson(editions.present)},
               {"summary", Summary(editions.differences)},
               {"differences", differences}});
}

void PrintFindingsOf(const compare::Edition& edition) {
    for (const auto& finding : edition.findings) {
        if (finding.severity == dictionary::kWarning)
            std::fprintf(stderr, "warning: %s: %s\n", edition.source.c_str(),
                         compare::WordsOf(finding).c_str());
    }
}

/// "field renamed SHOP-CODE-0101 in WORKSHOP: name SHOP-ID-0101 -> SHOP-CODE-0101".
std::string LineOf(const compare::Row& row) {
    const auto& [kind, change, name, where, what, former, present] = row;
    std::string line = kind + " " + change + " " + name;
    if (!where.empty()) line += (kind == NameOf(compare::Kind::Field) ? " in " : " of ") + where;
    line += ": ";
    if (what.empty()) return line + former + present;
    const auto shown = [](const std::string& text) { return text.empty() ? std::string("(none)") : text; };
    return line + what + " " + shown(former) + " -> " + shown(present);
}

void PrintText(const compare::ComparedEditions& editions) {
    PrintFindingsOf(editions.former);
    PrintFindingsOf(editions.present);
    for (const compare::Row& row : Rows(editions.differences)) std::printf("%s\n", LineOf(row).c_str());
    std::printf("%s\n", Summary(editions.differences).c_str());
}

/// A dictionary that is there; without one, reports can still be compared.
void OpenStoreIfThere(CommandContext& context) {
    if (FileExists(context.app->AppPath(places::kStore))) context.OpenStore();
}

int Compare(CommandContext& context, const CompareOptions& options, const DrawDifferences& draw) {
    OpenStoreIfThere(context);
    AppState& app = *context.app;
    const auto compared = commands::CompareEditions(commands::ReadEdition(app, options.former),
                                                    commands::ReadEdition(app, options.present));
    if (!compared.editions) return Refuse(compared.refusal);
    const compare::ComparedEditions& editions = *compared.editions;
    if (!options.html.empty()) {
        const std::string page = AbsolutePath(options.html);
        if (const auto why = commands::WhyNotWrittenTo(page, editions)) return Refuse(*why);
        WriteFile(page, HtmlPage(editions));
    }
    options.json ? PrintJsonOf(editions) : PrintText(editions);
    return options.draw ? draw(context, editions, options.out) : kDone;
}

}  // namespace

void AddCompare(CLI::App& program, CommandContext& context, const DrawDifferences& draw) {
    auto options = std::make_shared<CompareOptions>();
    auto* command = program.add_subcommand("compare", "Print what changed between two editions of a schema");
    command
        ->add_option("FORMER", options->former,
                     "Schema of the dictionary or, with a / in its name or without such a schema, a report")
        ->required();
    command->add_option("PRESENT", options->present, "The newer one, likewise")->required();
    command->add_flag("--json", options->json, "As a JSON object, with all findings");
    command->add_option("--html", options->html, "Write the list as a page of HTML, too");
    if (draw) {
        auto* drawing = command->add_flag("--draw", options->draw,
                                          "Draw the newer schema with the differences marked, too");
        command
            ->add_option("--out", options->out, "Folder of the drawings (default: the setting visiolocation)")
            ->needs(drawing);
    }
    command->callback([&context, options, draw] {
        context.run = [&context, options, draw] { return Compare(context, *options, draw); };
    });
}

void AddCompareCommand(CLI::App& program, CommandContext& context) {
    AddCompare(program, context, {});
}

}  // namespace norvelis::cli
