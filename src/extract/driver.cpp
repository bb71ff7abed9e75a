#include "extract/driver.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "compare/comparison_text.h"
#include "core/log.h"
#include "core/places.h"
#include "dictionary/clearing.h"
#include "dictionary/findings.h"
#include "dictionary/schema_contents.h"
#include "dictionary/schemas.h"
#include "extract/parent_pass.h"
#include "extract/record_pass.h"
#include "extract/report.h"
#include "extract/report_checks.h"
#include "extract/set_checks.h"
#include "store/former_store.h"
#include "store/transaction.h"

namespace norvelis {

namespace {

void Say(AppState& app, const ExtractionDriver& driver, const std::string& text) {
    if (driver.attended) {
        app.host.MessageBox(text);
    } else {
        WriteToScheduleLog(app, text);
    }
}

void ShowStage(AppState& app, const ExtractionDriver& driver, const std::string& text) {
    if (driver.attended) app.host.Status(text);
    app.host.Yield();
}

/// The stage of an extraction is on the screen's status line for as long as it runs.
class StageShown {
  public:
    StageShown(Host& host, const ExtractionDriver& driver) : host_(host), attended_(driver.attended) {}
    ~StageShown() {
        if (attended_) host_.Status({});
    }
    StageShown(const StageShown&) = delete;
    StageShown& operator=(const StageShown&) = delete;

  private:
    Host& host_;
    bool attended_;
};

/// Little memory for the store's pages while an extraction writes them.
class WritingCache {
  public:
    explicit WritingCache(Connection& connection) : connection_(connection) {
        connection_.SetPageCache(Connection::kWritingCache);
    }
    ~WritingCache() { connection_.SetPageCache(Connection::kBrowsingCache); }
    WritingCache(const WritingCache&) = delete;
    WritingCache& operator=(const WritingCache&) = delete;

  private:
    Connection& connection_;
};

// False when the report was refused in words.
bool Accept(AppState& app, const ExtractionDriver& driver, const ReportFile& report) {
    const std::string& path = report.path;
    switch (report.check) {
        case ReportCheck::NotNamed:
            Say(app, driver, "IDMS Report file has not been set.");
            if (driver.attended) app.host.OpenScreen(Screen::Settings, false);
            return false;
        case ReportCheck::Missing:
            Say(app, driver,
                "Report File :" + path + std::string(kLineBreak) + "does not exist. Please set it.");
            if (driver.attended) app.host.OpenScreen(Screen::Settings, true);
            return false;
        case ReportCheck::NoReport:
            Say(app, driver,
                "Invalid IDMS Report File :" + path + std::string(kLineBreak) + "Action terminated");
            app.gReportFile.clear();
            return false;
        case ReportCheck::Valid:
            break;
    }
    if (FileExists(path)) return true;
    Say(app, driver, "IDMS Report file is missing");
    return false;
}

bool DecideToDelete(AppState& app, const ExtractionDriver& driver) {
    const std::string question = "Delete all dictionaries and extract report";
    if (!driver.attended) {
        Say(app, driver, question);
        return true;
    }
    if (!FileExists(driver.store)) return false;
    if (app.host.MessageBox({question + "?", {}, Buttons::YesNo, Icon::Question, Answer::Ok}) == Answer::Yes)
        return true;
    Say(app, driver, "You have chosen to append new dictionary to existing report");
    return false;
}

void RunPasses(AppState& app, const ExtractionDriver& driver, ExtractionState& state) {
    ShowStage(app, driver, "Collecting CALC and VIA Records ");
    CollectParentandChildren(state);
    ShowStage(app, driver, "Adding more information to Records ");
    IdmsUpdateRecords(state);
    CheckSets(state);
    CheckReport(state);
    ShowStage(app, driver, "Adding Index and Connections Records ");
}

// By the lines of the file; what is about the whole report comes first.
std::vector<Finding> InOrder(std::vector<Finding> findings, const repair::LineMap& lines) {
    for (Finding& finding : findings) {
        if (finding.line != 0) finding.line = lines.OnDisk(finding.line);
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return findings;
}

void StoreFindings(Connection& store, const std::string& schema, const std::vector<Finding>& findings) {
    std::vector<dictionary::FindingRow> rows;
    rows.reserve(findings.size());
    for (const Finding& finding : findings) {
        rows.push_back({schema, std::string(NameOf(SeverityOf(finding.kind))),
                        std::string(NameOf(finding.kind)), finding.line, finding.subject, finding.reason,
                        std::string(RemedyFor(finding.kind))});
    }
    dictionary::ReplaceFindings(store, schema, rows);
}

std::vector<std::string> OtherSchemas(Connection& store, const std::string& schema) {
    std::vector<std::string> others;
    for (Recordset row = dictionary::SchemasOfRecords(store); !row.Eof(); row.MoveNext()) {
        if (const std::string name = row.Text("schemaname"); !SameName(name, schema)) others.push_back(name);
    }
    return others;
}

std::string Joined(const std::vector<std::string>& names) {
    return fmt::format("{}", fmt::join(names, ", "));
}

// What the dictionary would lose for nothing; empty when it would not.
std::string LossBy(const ReportContents& contents, const std::string& schema, Connection& store,
                   const std::vector<std::string>& removed) {
    const long present = dictionary::CountRecords(store, schema);
    if (contents.records == 0 && (present > 0 || !removed.empty())) {
        return fmt::format("The report yields no record. The dictionary has {}, which would be removed.",
                           present > 0 ? fmt::format("{} records of this schema", present)
                                       : "the schemas " + Joined(removed));
    }
    if (contents.records * 2 < static_cast<std::size_t>(present)) {
        return fmt::format("Records of schema {}: the report yields {}, the dictionary has {}.", schema,
                           contents.records, present);
    }
    if (!removed.empty() && schema.empty())
        return "The report has no schema name, and these schemas would be removed: " + Joined(removed) + ".";
    return {};
}

/// One extraction into the store, all of it or nothing.
class Extraction {
  public:
    Extraction(AppState& app, const ExtractionDriver& driver, ReportFile file)
        : app_(app),
          driver_(driver),
          lines_(std::move(file.lines)),
          state_(app, driver.connection, Report(std::move(file.bytes)), driver.attended) {
        state_.schemaWhenUnnamed = driver.schemaWhenUnnamed;
    }

    ExtractionResult Run(bool deleteAll) {
        const WritingCache cache(driver_.connection);
        const StageShown stage(app_.host, driver_);
        Transaction transaction(driver_.connection);
        const ReportContents contents = ContentsOf(state_.report);
        const std::string schema = contents.schema.empty() ? driver_.schemaWhenUnnamed : contents.schema;
        std::vector<std::string> others;
        if (deleteAll) others = OtherSchemas(driver_.connection, schema);
        if (driver_.acceptsLoss) {
            const std::string loss = LossBy(contents, schema, driver_.connection, others);
            if (!loss.empty() && !driver_.acceptsLoss(loss)) return {};
        }
        if (driver_.keepsFormer &&
            (!others.empty() || dictionary::CountRecords(driver_.connection, schema) > 0))
            former_.emplace(driver_.connection);
        std::optional<dictionary::SchemaContents> formerEdition;
        if (driver_.comparesEditions && dictionary::CountRecords(driver_.connection, schema) > 0)
            formerEdition = dictionary::ReadSchema(driver_.connection, schema);
        if (deleteAll) dictionary::ClearAll(driver_.connection);
        ExtractionResult result = ReadReport(transaction);
        if (!result.done) return result;
        result.removedSchemas = std::move(others);
        if (formerEdition) {
            result.differences = compare::Summary(compare::Compare(
                *formerEdition, dictionary::ReadSchema(driver_.connection, app_.gSchemaName)));
        }
        return result;
    }

  private:
    // A failure of the report keeps what was gathered until then; any other leaves the store as it was.
    ExtractionResult ReadReport(Transaction& transaction) {
        ExtractionResult result;
        try {
            RunPasses(app_, driver_, state_);
        } catch (const RuntimeFailure& failure) {
            if (!IsFailureOfTheReport(failure)) throw;
            const auto counts = Commit(transaction, InOrder(std::move(state_.findings), lines_));
            throw RuntimeFailure(
                failure.Number(),
                fmt::format("{}; what was gathered until then is in the dictionary (records: {}, fields: {})",
                            failure.Detail(), counts.records, counts.fields));
        }
        result.findings = InOrder(std::move(state_.findings), lines_);
        if (driver_.refusesWarnings && CountWarnings(result.findings) > 0) return result;
        result.counts = Commit(transaction, result.findings);
        result.done = true;
        return result;
    }

    dictionary::Counts Commit(Transaction& transaction, const std::vector<Finding>& findings) {
        state_.Finish();
        const dictionary::Counts counts = state_.writer->CountRows();
        StoreFindings(driver_.connection, app_.gSchemaName, findings);
        transaction.Commit();
        if (former_) former_->Keep();
        return counts;
    }

    AppState& app_;
    const ExtractionDriver& driver_;
    const repair::LineMap lines_;
    ExtractionState state_;
    std::optional<FormerStore> former_;
};

// No is the default: the person has to want the loss.
bool AskAboutLoss(AppState& app, const std::string& loss) {
    return app.host.MessageBox({loss + std::string(kLineBreak) + "Extract the report all the same?",
                                {},
                                Buttons::YesNo,
                                Icon::Question,
                                Answer::No}) == Answer::Yes;
}

}  // namespace

ExtractionDriver InteractiveDriver(AppState& app, std::function<void()> refresh) {
    ExtractionDriver driver{true, app.AppPath(places::kStore), *app.gConnection, std::move(refresh)};
    driver.acceptsLoss = [&app](const std::string& loss) { return AskAboutLoss(app, loss); };
    driver.keepsFormer = true;
    driver.comparesEditions = true;
    return driver;
}

ExtractionDriver SchedulerDriver(AppState& app, Connection& batchConnection) {
    return {false, app.AppPath(places::kStore), batchConnection, {}};
}

ExtractionResult process_Classic_Extract_Report(AppState& app, const ExtractionDriver& driver,
                                                ReportFile report) {
    app.gReportFile = report.path;
    if (!Accept(app, driver, report)) return {};
    app.host.SetAfterCancel("The dictionary is as it was before.");
    const bool deleteAll = DecideToDelete(app, driver);
    ExtractionResult result = Extraction(app, driver, std::move(report)).Run(deleteAll);
    if (!result.done) return result;

    app.host.SetAfterCancel("The report is in the dictionary; REFRESH shows it in the tree.");
    if (driver.refresh) driver.refresh();
    Say(app, driver,
        "Done Extracting Records from report file: " + std::string(kLineBreak) + app.gReportFile +
            std::string(kLineBreak) + " into Access File:" + std::string(kLineBreak) + driver.store);
    return result;
}

bool IsFailureOfTheReport(const RuntimeFailure& failure) {
    return failure.Number() == FailureNumber::SubscriptOutOfRange ||
           failure.Number() == FailureNumber::InputPastEnd;
}

ExtractionResult ExtractInto(AppState& app, Connection& store, ReportFile report,
                             const std::string& schemaWhenUnnamed) {
    ExtractionDriver driver{false, {}, store, {}};
    driver.schemaWhenUnnamed = schemaWhenUnnamed;
    return Extraction(app, driver, std::move(report)).Run(false);
}

std::vector<Finding> FindingsIn(AppState& app, ReportFile report, const std::string& schemaWhenUnnamed) {
    return ExtractInto(app, *Connection::WithoutMemory(), std::move(report), schemaWhenUnnamed).findings;
}

}  // namespace norvelis
