#include "cli/table_commands.h"

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "base/paths.h"
#include "base/text.h"
#include "cli/json_output.h"
#include "dictionary/dumped_schema.h"
#include "dictionary/schema_contents.h"
#include "dictionary/schemas.h"
#include "sqlconv/report/conversion_report.h"
#include "sqlconv/tables/item_type.h"

namespace norvelis::cli {

namespace {

using Json = nlohmann::ordered_json;
using tables::Dialect;

struct ScriptOptions {
    std::string schema, dialect, options, out, report, since;
    bool json = false;
};

std::string DialectNames() {
    std::string names;
    for (const Dialect* dialect : tables::AllDialects())
        names += (names.empty() ? "" : "|") + std::string(dialect->Name());
    return names;
}

Json JsonOf(const tables::Count& count) {
    return {{"converted", count.converted}, {"all", count.all}};
}

Json ReportJson(const tables::KeptTables& kept) {
    const tables::Totals totals = tables::TotalsOf(kept.model);
    Json outcomes = Json::array();
    for (const auto& outcome : kept.model.outcomes) {
        outcomes.push_back({{"what", tables::SubjectName(outcome.subject)},
                            {"record", outcome.record},
                            {"name", outcome.name},
                            {"became", outcome.became},
                            {"type", outcome.became.empty() ? "" : kept.dialect.TypeText(outcome.type)},
                            {"why", outcome.why},
                            {"lookAt", outcome.lookAt}});
    }
    return {{"schema", kept.model.schema},
            {"dialect", kept.dialect.Name()},
            {"totals",
             {{"records", JsonOf(totals.records)},
              {"fields", JsonOf(totals.fields)},
              {"sets", JsonOf(totals.sets)},
              {"indexes", JsonOf(totals.indexes)},
              {"tables", totals.tables},
              {"foreignKeys", totals.foreignKeys},
              {"lookAt", totals.toLookAt}}},
            {"outcomes", std::move(outcomes)}};
}

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

std::string JsonText(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

int MakeScript(CommandContext& context, const ScriptOptions& options) {
    const Dialect* dialect = tables::DialectNamed(options.dialect);
    if (dialect == nullptr)
        return Refuse("there is no dialect " + options.dialect + "; there are " + DialectNames());
    if (!options.out.empty() && Resolve(AbsolutePath(options.out)) == Resolve(AbsolutePath(options.report)))
        return Refuse("--out and --report are the same file");
    context.OpenStore();
    Connection& store = *context.app->gConnection;
    if (!dictionary::StoredSchemaName(store, options.schema))
        return Refuse("there is no schema " + options.schema + " in the dictionary");
    const auto contents = dictionary::ReadSchema(store, options.schema);
    const tables::Options wishes = OptionsIn(options.options, contents.name);
    const tables::KeptTables kept =
        options.since.empty()
            ? tables::MakeKeptTables(contents, wishes, *dialect)
            : tables::MakeDifference(dictionary::ReadDumpedSchema(ReadInput(options.since), contents.name),
                                     contents, wishes, *dialect);
    const std::string script = tables::ScriptText(kept.script, *dialect);
    if (!options.report.empty())
        WriteFile(AbsolutePath(options.report),
                  options.json ? JsonText(ReportJson(kept)) : tables::ReportHtml(kept.model, *dialect));
    if (!options.out.empty()) WriteFile(AbsolutePath(options.out), script);
    if (options.json && options.report.empty())
        Print(JsonText(ReportJson(kept)));
    else if (options.out.empty())
        Print(script);
    return kDone;
}

std::string TextOf(const Json& object, const char* key) {
    const auto value = object.find(key);
    return value != object.end() && value->is_string() ? value->get<std::string>() : std::string();
}

/// One type for each dialect, for each line of standard input.
int PrintTypes() {
    std::string line;
    for (std::size_t number = 1; std::getline(std::cin, line); ++number) {
        if (Trim(line).empty() || line == "\r") continue;
        const Json object = Json::parse(line, nullptr, false);
        if (!object.is_object())
            return Refuse("line " + std::to_string(number) + " of standard input is no JSON object");
        const std::string picture = TextOf(object, "picture"), usage = TextOf(object, "usage");
        const tables::ColumnType type =
            tables::TypeFor(cobol::ReadPicture(cobol::PictureWord(picture)), cobol::ReadUsage(usage), {});
        for (const Dialect* dialect : tables::AllDialects()) {
            const Json answer = {{"picture", picture},
                                 {"usage", usage},
                                 {"dialect", dialect->Name()},
                                 {"type", dialect->TypeText(type)}};
            Print(answer.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n");
        }
    }
    return kDone;
}

}  // namespace

tables::Options OptionsIn(const std::string& path, const std::string& schema) {
    if (path.empty()) return {};
    tables::Options options = tables::ReadOptions(ReadInput(path), schema);
    for (const auto& [line, words] : options.mistakes)
        std::fprintf(stderr, "%s line %zu: %s\n", path.c_str(), line, words.c_str());
    return options;
}

void AddTableCommands(CLI::App& sql, CommandContext& context) {
    auto options = std::make_shared<ScriptOptions>();
    auto* script = sql.add_subcommand("script", "Print the script of tables with types, keys and relations");
    script->add_option("SCHEMA", options->schema, "Schema of the dictionary")->required();
    script->add_option("--dialect", options->dialect, DialectNames())->required();
    script->add_option("--options", options->options,
                       "File of names, types and keys; \"sql options\" prints one");
    script->add_option("--out", options->out, "Write the script to this file");
    script->add_option("--report", options->report, "Write what became of everything to this file, as HTML");
    script->add_option("--since", options->since,
                       "Only what is new since this file, which \"dump\" has printed");
    script->add_flag("--json", options->json, "The report as JSON; to standard output without --report");
    script->callback([&context, options] { context.run = [&] { return MakeScript(context, *options); }; });

    sql.add_subcommand("types", "Print the types of pictures and usages, JSON lines on standard input")
        ->callback([&context] { context.run = PrintTypes; });
    sql.add_subcommand("options", "Print a commented file of the options of tables")->callback([&context] {
        context.run = [] {
            Print(std::string(tables::SampleOptions()));
            return kDone;
        };
    });
}

}  // namespace norvelis::cli
