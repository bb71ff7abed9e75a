#include "extract/driver.h"

#include <utility>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/log.h"
#include "core/places.h"
#include "dictionary/clearing.h"
#include "extract/parent_pass.h"
#include "extract/record_pass.h"
#include "extract/report.h"
#include "store/transaction.h"

namespace norvelis {

namespace {

void Say(AppState& app, const ExtractionDriver& driver, const std::string& text) {
    if (driver.attended) {
        app.host.MessageBox(text);
    } else {
        WriteToProcessLog(app, "Form Scheduler", "General message", text);
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
    ShowStage(app, driver, "Adding Index and Connections Records ");
}

// True for what the report itself causes: too many fields or keys, an end in the middle of a record.
bool IsFailureOfTheReport(const RuntimeFailure& failure) {
    return failure.Number() == FailureNumber::SubscriptOutOfRange ||
           failure.Number() == FailureNumber::InputPastEnd;
}

// A failure of the report keeps what was gathered until then; any other leaves the store as it was.
dictionary::Counts WriteDictionary(AppState& app, const ExtractionDriver& driver, Report report,
                                   bool deleteAll) {
    const WritingCache cache(driver.connection);
    const StageShown stage(app.host, driver);
    Transaction transaction(driver.connection);
    if (deleteAll) dictionary::ClearAll(driver.connection);
    ExtractionState state(app, driver.connection, std::move(report), driver.attended);
    try {
        RunPasses(app, driver, state);
    } catch (const RuntimeFailure& failure) {
        if (!IsFailureOfTheReport(failure)) throw;
        state.Finish();
        transaction.Commit();
        throw;
    }
    state.Finish();
    transaction.Commit();
    return state.writer->CountRows();
}

}  // namespace

ExtractionDriver InteractiveDriver(AppState& app, std::function<void()> refresh) {
    return {true, app.AppPath(places::kStore), *app.gConnection, std::move(refresh)};
}

ExtractionDriver SchedulerDriver(AppState& app, Connection& batchConnection) {
    return {false, app.AppPath(places::kStore), batchConnection, {}};
}

std::optional<dictionary::Counts> process_Classic_Extract_Report(AppState& app,
                                                                 const ExtractionDriver& driver,
                                                                 ReportFile report) {
    app.gReportFile = report.path;
    if (!Accept(app, driver, report)) return std::nullopt;
    app.host.SetAfterCancel("The dictionary is as it was before.");
    const bool deleteAll = DecideToDelete(app, driver);
    const dictionary::Counts counts =
        WriteDictionary(app, driver, Report(std::move(report.bytes)), deleteAll);

    app.host.SetAfterCancel("The report is in the dictionary; REFRESH shows it in the tree.");
    if (driver.refresh) driver.refresh();
    Say(app, driver,
        "Done Extracting Records from report file: " + std::string(kLineBreak) + app.gReportFile +
            std::string(kLineBreak) + " into Access File:" + std::string(kLineBreak) + driver.store);
    return counts;
}

}  // namespace norvelis
