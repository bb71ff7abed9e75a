#include "extract/driver.h"

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/log.h"
#include "core/settings.h"
#include "extract/passes.h"
#include "extract/report.h"

namespace norvelis {

namespace {

constexpr std::string_view kStore = "\\Database\\records.mdb";

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

// The report that gReportFile names, read once; nothing when it was refused in words.
std::optional<Report> ReadReport(AppState& app, const ExtractionDriver& driver) {
    const std::string path = app.gReportFile;
    if (path.empty()) {
        Say(app, driver, "IDMS Report file has not been set.");
        if (driver.attended) app.host.OpenScreen(Screen::Settings, false);
        return std::nullopt;
    }
    if (!FileExists(path)) {
        Say(app, driver, "Report File :" + path + std::string(kLineBreak) + "does not exist. Please set it.");
        if (driver.attended) app.host.OpenScreen(Screen::Settings, true);
        return std::nullopt;
    }
    std::string bytes = ReadFile(path);
    if (!IsSchemaReport(bytes)) {
        Say(app, driver, "Invalid IDMS Report File :" + path + std::string(kLineBreak) + "Action terminated");
        app.gReportFile.clear();
        return std::nullopt;
    }
    if (!FileExists(path)) {
        Say(app, driver, "IDMS Report file is missing");
        return std::nullopt;
    }
    return Report(std::move(bytes));
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

// Leaves schema_details: those rows go when their schema is extracted again.
void DeleteAllDictionaries(Connection& store) {
    store.Execute("Delete * FROM Parents");
    store.Execute("Delete * FROM connection_details");
    store.Execute("Delete * FROM record_layout");
    store.Execute("Delete * FROM index_details");
    store.Execute("Delete * FROM Record_details");
}

void RunPasses(AppState& app, const ExtractionDriver& driver, ExtractionState& state) {
    ShowStage(app, driver, "Collecting CALC and VIA Records ");
    CollectParentandChildren(state);
    ShowStage(app, driver, "Adding more information to Records ");
    IdmsUpdateRecords(state);
    ShowStage(app, driver, "Adding Index and Connections Records ");
}

// What a failure of the report leaves gathered is kept; after any other failure the store is as it was.
ExtractionCounts WriteDictionary(AppState& app, const ExtractionDriver& driver, Report report,
                                 bool deleteAll) {
    const WritingCache cache(driver.connection);
    Transaction transaction(driver.connection);
    try {
        if (deleteAll) DeleteAllDictionaries(driver.connection);
        ExtractionState state(app, driver.connection, std::move(report), driver.attended);
        try {
            RunPasses(app, driver, state);
        } catch (const RuntimeFailure& failure) {
            if (failure.Number() == FailureNumber::StoreFailure) throw;
            FinishExtraction(state);
            transaction.Commit();
            throw;
        }
        FinishExtraction(state);
        transaction.Commit();
        return state.writer->Counts();
    } catch (...) {
        transaction.Rollback();
        throw;
    }
}

}  // namespace

ExtractionDriver InteractiveDriver(AppState& app, std::function<void()> refresh) {
    return {true, app.AppPath(kStore), *app.gConnection, std::move(refresh)};
}

ExtractionDriver JobScreenDriver(AppState& app, const std::string& job, std::function<void()> refresh) {
    return {true, app.AppPath("\\batchjobs\\" + job + "\\" + job + ".mdb"), *app.gConnection,
            std::move(refresh)};
}

ExtractionDriver SchedulerDriver(AppState& app, Connection& batchConnection) {
    return {false, app.AppPath(kStore), batchConnection, {}};
}

std::optional<ExtractionCounts> process_Classic_Extract_Report(AppState& app,
                                                               const ExtractionDriver& driver) {
    app.gReportFile = getreportlocation(app);
    std::optional<Report> report = ReadReport(app, driver);
    if (!report) return std::nullopt;
    const bool deleteAll = DecideToDelete(app, driver);
    const ExtractionCounts counts = WriteDictionary(app, driver, *std::move(report), deleteAll);

    if (driver.refresh) driver.refresh();
    Say(app, driver,
        "Done Extracting Records from report file: " + std::string(kLineBreak) + app.gReportFile +
            std::string(kLineBreak) + " into Access File:" + std::string(kLineBreak) + driver.store);
    return counts;
}

}  // namespace norvelis
