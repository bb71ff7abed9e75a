#include "commands/compare_commands.h"

#include <filesystem>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/text.h"
#include "dictionary/schemas.h"
#include "extract/driver.h"
#include "extract/report_checks.h"
#include "extract/report_file.h"
#include "store/temporary_store.h"

namespace norvelis::commands {

namespace {

EditionRead Refused(std::string why) {
    return {std::nullopt, std::move(why)};
}

std::vector<dictionary::FindingRow> FindingsOf(Connection& store, std::string_view schema) {
    std::vector<dictionary::FindingRow> findings = dictionary::Findings(store);
    std::erase_if(findings, [schema](const auto& finding) { return !SameName(finding.schema, schema); });
    return findings;
}

/// An extraction names the schema that it reads; the one that the screens name comes back behind it.
class SchemaNameKept {
  public:
    explicit SchemaNameKept(AppState& app) : app_(app), name_(app.gSchemaName) {}
    ~SchemaNameKept() { app_.gSchemaName = name_; }
    SchemaNameKept(const SchemaNameKept&) = delete;
    SchemaNameKept& operator=(const SchemaNameKept&) = delete;

  private:
    AppState& app_;
    const std::string name_;
};

std::string NoSchema(const std::string& schema) {
    return "there is no schema " + (schema.empty() ? "without a name" : schema) + " in the dictionary";
}

/// ": the file is IBM037 (repair it first)" for a file in which a report cannot be recognized as it is.
std::string FormInWords(const std::string& bytes) {
    for (const Finding& finding : CheckForm(bytes)) {
        if (finding.kind == FindingKind::Encoding) return ": " + finding.reason + " (repair it first)";
    }
    return {};
}

std::string WhyNoReport(const ReportFile& report) {
    if (report.check == ReportCheck::NoReport)
        return report.path + " is no schema report" + FormInWords(report.bytes);
    const std::string why = WhyNoFile(report.path);
    return report.path + " " + (why.empty() ? "does not exist" : why);
}

}  // namespace

EditionRead EditionInDictionary(AppState& app, const std::string& schema) {
    Connection& store = *app.gConnection;
    const auto name = dictionary::StoredSchemaName(store, schema);
    if (!name) return Refused(NoSchema(schema));
    return {compare::Edition{*name, false, dictionary::ReadSchema(store, *name), FindingsOf(store, *name)},
            {}};
}

EditionRead EditionInReport(AppState& app, const std::string& path) {
    ReportFile report = ValidateReportFile(path);
    if (report.check != ReportCheck::Valid) return Refused(WhyNoReport(report));
    compare::Edition edition;
    edition.source = report.path;
    edition.isReport = true;
    const SchemaNameKept kept(app);
    const TemporaryStore store;
    std::string brokenOff;
    try {
        ExtractInto(app, *store, std::move(report), {});
    } catch (const RuntimeFailure& failure) {
        if (!IsFailureOfTheReport(failure)) throw;
        brokenOff = RuntimeFailure(failure.Number()).what();
    }
    edition.contents = dictionary::ReadSchema(*store, app.gSchemaName);
    edition.findings = FindingsOf(*store, app.gSchemaName);
    if (!brokenOff.empty()) {
        edition.findings.insert(
            edition.findings.begin(),
            {app.gSchemaName,
             std::string(dictionary::kWarning),
             "report-broken-off",
             0,
             {},
             "the report was not read to its end (" + brokenOff + "); what was read until then is compared",
             {}});
    }
    return {std::move(edition), {}};
}

EditionRead ReadEdition(AppState& app, const std::string& schemaOrPath) {
    const bool isPath = schemaOrPath.find_first_of("/\\") != std::string::npos;
    const bool isSchema =
        !isPath && app.gConnection && dictionary::StoredSchemaName(*app.gConnection, schemaOrPath);
    if (isSchema) return EditionInDictionary(app, schemaOrPath);
    if (schemaOrPath.empty()) return Refused(NoSchema(schemaOrPath));
    if (!isPath && !FileExists(schemaOrPath))
        return Refused(NoSchema(schemaOrPath) + " and no file of that name");
    return EditionInReport(app, schemaOrPath);
}

EditionsCompared CompareEditions(EditionRead former, EditionRead present) {
    if (!former.edition) return {std::nullopt, std::move(former.refusal)};
    if (!present.edition) return {std::nullopt, std::move(present.refusal)};
    compare::ComparedEditions editions{*std::move(former.edition), *std::move(present.edition), {}};
    editions.differences = compare::Compare(editions.former.contents, editions.present.contents);
    return {std::move(editions), {}};
}

std::optional<std::string> WhyNotWrittenTo(const std::string& file,
                                           const compare::ComparedEditions& editions) {
    for (const compare::Edition* edition : {&editions.former, &editions.present}) {
        std::error_code error;
        if (edition->isReport && std::filesystem::equivalent(Resolve(file), Resolve(edition->source), error))
            return file + " is the report that is compared; choose another file";
    }
    return std::nullopt;
}

}  // namespace norvelis::commands
