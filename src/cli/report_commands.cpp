#include <fmt/format.h>
#include <fmt/ranges.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/findings_output.h"
#include "cli/json_output.h"
#include "core/settings.h"
#include "extract/driver.h"
#include "extract/report_checks.h"
#include "extract/report_file.h"

namespace norvelis::cli {

namespace {

struct ReportOptions {
    std::string report, schema, encoding;
    bool append = false, repair = false, notes = false, json = false, strict = false, force = false;
};

ReportFile Read(const ReportOptions& options) {
    const std::string path = AbsolutePath(options.report);
    if (!options.repair) return ValidateReportFile(path);
    return RepairReportFile(path, repair::EncodingNamed(options.encoding));
}

// What is wrong with the file when it cannot be a report; nothing when it is one.
std::optional<int> RefusedFile(const ReportFile& report) {
    if (report.check == ReportCheck::Valid) return std::nullopt;
    if (report.check == ReportCheck::NotNamed) return Refuse("IDMS Report file has not been set.");
    if (report.check == ReportCheck::NoReport) {
        PrintFindings(CheckForm(report.bytes), false);
        return Refuse("Invalid IDMS Report File :" + report.path + "\r\nAction terminated");
    }
    if (const std::string why = WhyNoFile(report.path); !why.empty())
        return Refuse("Report File :" + report.path + " " + why);
    return Refuse("Report File :" + report.path + "\r\ndoes not exist. Please set it.");
}

std::string CountText(std::size_t warnings) {
    return warnings == 0 ? "no warnings" : warnings == 1 ? "1 warning" : fmt::format("{} warnings", warnings);
}

int RefuseWarnings(std::size_t warnings) {
    return Refuse(CountText(warnings) + ", so the dictionary is as it was");
}

int Validate(CommandContext& context, const ReportOptions& options) {
    ReportFile report = Read(options);
    if (const auto refused = RefusedFile(report)) return *refused;
    const std::string path = report.path;
    const auto changes = report.changes;
    const auto findings = FindingsIn(*context.app, std::move(report), options.schema);
    const std::size_t warnings = CountWarnings(findings);
    if (options.json) {
        nlohmann::ordered_json object{{"report", path}};
        AddFindings(object, findings, changes);
        cli::PrintJson(object);
    } else {
        PrintChanges(changes);
        PrintFindings(findings, options.notes);
        std::printf("%s is a schema report, %s\n", path.c_str(), CountText(warnings).c_str());
    }
    return options.strict && warnings > 0 ? kRefused : kDone;
}

/// One extraction and what it says.
class Extract {
  public:
    Extract(CommandContext& context, const ReportOptions& options) : context_(context), options_(options) {}

    int Run() {
        ReportFile report = Read(options_);
        if (const auto refused = RefusedFile(report)) return *refused;
        context_.OpenStore();
        path_ = report.path;
        changes_ = report.changes;
        if (!options_.json) PrintChanges(changes_);
        context_.host.AnswerTo("Delete all dictionaries and extract report?",
                               options_.append ? Answer::No : Answer::Yes);
        context_.host.PrintBoxes(false);
        const auto start = std::chrono::steady_clock::now();
        const ExtractionResult result =
            process_Classic_Extract_Report(*context_.app, Driver(), std::move(report));
        seconds_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (!loss_.empty()) return Refuse(loss_ + " Nothing was changed; --force extracts it all the same");
        if (!options_.json) PrintFindings(result.findings, options_.notes);
        if (result.done) setreportlocation(*context_.app, path_);
        options_.json ? PrintJson(result) : PrintText(result);
        if (result.done) return kDone;
        const std::size_t warnings = CountWarnings(result.findings);
        return warnings == 0 ? Refuse(context_.host.LastText()) : RefuseWarnings(warnings);
    }

  private:
    ExtractionDriver Driver() {
        ExtractionDriver driver = InteractiveDriver(*context_.app, {});
        driver.refusesWarnings = options_.strict;
        driver.schemaWhenUnnamed = options_.schema;
        driver.acceptsLoss = [this](const std::string& loss) {
            if (!options_.force) loss_ = loss;
            return options_.force;
        };
        return driver;
    }

    void PrintText(const ExtractionResult& result) const {
        if (!result.done) return;
        std::printf("%s\n", WithNewlines(context_.host.LastText()).c_str());
        if (!result.removedSchemas.empty())
            std::printf("Removed schemas: %s\n",
                        fmt::format("{}", fmt::join(result.removedSchemas, ", ")).c_str());
        const auto& counts = result.counts;
        std::printf(
            "Schema %s: %zu records, %zu fields, %zu sets, %zu indexes in %.2f seconds, %s%s\n",
            context_.app->gSchemaName.c_str(), counts.records, counts.fields, counts.sets, counts.indexes,
            seconds_, CountText(CountWarnings(result.findings)).c_str(),
            result.differences.empty() ? "" : ("; since the former edition: " + result.differences).c_str());
    }

    void PrintJson(const ExtractionResult& result) const {
        nlohmann::ordered_json object{{"report", path_},
                                      {"extracted", result.done},
                                      {"schema", context_.app->gSchemaName},
                                      {"records", result.counts.records},
                                      {"fields", result.counts.fields},
                                      {"sets", result.counts.sets},
                                      {"indexes", result.counts.indexes},
                                      {"seconds", seconds_},
                                      {"removed", result.removedSchemas},
                                      {"differences", result.differences}};
        AddFindings(object, result.findings, changes_);
        cli::PrintJson(object);
    }

    CommandContext& context_;
    const ReportOptions& options_;
    std::string path_, loss_;
    std::vector<repair::Change> changes_;
    double seconds_ = 0;
};

void AddReportOptions(CLI::App& command, ReportOptions& options) {
    command.add_option("REPORT", options.report, "The schema report")->required();
    command.add_option("--schema", options.schema, "Name of the schema when the report has none");
    auto* repair =
        command.add_flag("--repair", options.repair,
                         "Bring the file into the form of a report first: line ends, encoding, columns, "
                         "header, headings inside sections");
    command
        .add_option("--encoding", options.encoding,
                    "Encoding of the file: IBM037, IBM1047, UTF-16LE, UTF-16BE")
        ->needs(repair)
        ->check([](const std::string& name) {
            return repair::EncodingNamed(name) ? std::string() : "there is no encoding " + name;
        });
    command.add_flag("--notes", options.notes, "Print what the dictionary has no place for, too");
    command.add_flag("--strict", options.strict, "Warnings are status 1, and nothing is changed");
    command.add_flag("--json", options.json, "As a JSON object, with all findings");
}

}  // namespace

void AddReportCommands(CLI::App& program, CommandContext& context) {
    auto* validate =
        program.add_subcommand("validate", "Tell whether a file is a schema report and what it lacks");
    auto* extract = program.add_subcommand("extract", "Read a schema report into the dictionary");
    auto options = std::make_shared<ReportOptions>();
    AddReportOptions(*validate, *options);
    AddReportOptions(*extract, *options);
    extract->add_flag("--append", options->append, "Keep the other schemas in the dictionary");
    extract->add_flag("--force", options->force,
                      "Also when the dictionary would lose records or schemas by it");
    validate->callback(
        [&context, options] { context.run = [&context, options] { return Validate(context, *options); }; });
    extract->callback([&context, options] {
        context.run = [&context, options] { return Extract(context, *options).Run(); };
    });
}

}  // namespace norvelis::cli
