#include "commands/run_job.h"

#include <chrono>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "commands/batch_host.h"
#include "core/log.h"
#include "core/places.h"
#include "core/store_wait.h"
#include "diagram/draw_commands.h"
#include "dictionary/schemas.h"
#include "extract/driver.h"
#include "extract/report_file.h"
#include "scheduler/job_folder.h"

namespace norvelis::commands {

namespace {

/// One run, with a state of its own: what the screens work on is not touched.
class BatchRun {
  public:
    BatchRun(AppState& app, engine::DrawingEngine& engine, const std::string& name)
        : app_(app),
          engine_(engine),
          host_(app),
          batch_(app.ApplicationFolder, host_, app.clock, Random(app.random.Bits())),
          BatchJobName(name) {}
    ~BatchRun() {
        if (!BatchConnection) return;
        BatchConnection->Close();
        DeleteFile(BatchConnection->Path() + "-journal");  // Stays when a full disk refuses to go back.
    }
    BatchRun(const BatchRun&) = delete;
    BatchRun& operator=(const BatchRun&) = delete;

    RunEnd Run(const std::string& reportPath) {
        batch_.gReportFile = reportPath;
        try {
            return RunReport(ValidateReportFile(reportPath));
        } catch (const RuntimeFailure& failure) {
            const bool hasVanished =
                failure.Number() == FailureNumber::FileNotFound && !FileExists(reportPath);
            if (!hasVanished) throw;
            return Refuse(RunResult::Missing);
        }
    }

  private:
    RunEnd RunReport(ReportFile report) {
        switch (report.check) {
            case ReportCheck::NotNamed:
                return End(RunResult::Invalid, "IDMS Report file has not been set.");
            case ReportCheck::Missing:
                return Refuse(RunResult::Missing);
            case ReportCheck::NoReport:
                return Refuse(RunResult::Invalid);
            case ReportCheck::Valid:
                break;
        }
        const std::string folder = MakeJobFolder(batch_, BatchJobName);
        RunEnd end = End(RunResult::Ok, {});
        if (!FileExists(app_.AppPath(places::kStore))) {
            end.result = RunResult::Missing;
            return end;
        }
        WriteFileThrough(folder + "/" + BatchJobName + ".mdb", [&](const std::string& temporary) {
            CopyStore(temporary);
            Extract(std::move(report), end);
            host_.Yield();
            Draw(folder, end);
            if (end.words.empty()) end.words = folder;
            BatchConnection->Close();  // Nobody is to meet a store that is in use.
        });
        return end;
    }

    void CopyStore(const std::string& path) {
        WaitForStore(host_, [&] { app_.gConnection->CopyTo(path); });
        BatchConnection = Connection::OpenFile(path);
        batch_.gConnection = BatchConnection;
    }

    void Extract(ReportFile report, RunEnd& end) {
        const std::string path = report.path;
        const ExtractionResult result = process_Classic_Extract_Report(
            batch_, SchedulerDriver(batch_, *BatchConnection), std::move(report));
        if (!result) throw RuntimeFailure(FailureNumber::FileNotFound, path);
        end.records = result.counts.records;
        end.sets = result.counts.sets;
    }

    void Draw(const std::string& folder, RunEnd& end) {
        DrawScreen noScreen;
        DrawingState drawing(batch_, *BatchConnection, engine_, noScreen);
        drawing.report = [&](const std::string& text) {
            WriteToScheduleLog(app_, text);
            end.words += (end.words.empty() ? "" : "; ") + text;
        };
        for (auto row = dictionary::Schemas(*BatchConnection); !row.Eof(); row.MoveNext()) {
            const std::string schema(Trim(row.Text("schemaname")));
            const DrawResult result = DrawScheduledDiagram(drawing, schema, BatchJobName);
            if (result == DrawResult::NotSaved)
                WriteToScheduleLog(app_, "Error has been encountered. Close visio and try again.");
            if (result != DrawResult::Saved || !drawing.notWritten.empty())
                throw RuntimeFailure(FailureNumber::PathFileAccess, folder + ": " + end.words);
            ++end.drawings;
            host_.Yield();
        }
    }

    RunEnd Refuse(RunResult result) {
        return End(result, "Invalid IDMS Report File :" + batch_.gReportFile + std::string(kLineBreak) +
                               "Action terminated");
    }

    RunEnd End(RunResult result, const std::string& words) {
        if (!words.empty()) WriteToScheduleLog(app_, words);
        RunEnd end;
        end.result = result;
        end.words = words;
        return end;
    }

    AppState& app_;
    engine::DrawingEngine& engine_;
    BatchHost host_;
    AppState batch_;
    const std::string BatchJobName;
    std::shared_ptr<Connection> BatchConnection;
};

}  // namespace

RunEnd RunJob(AppState& app, engine::DrawingEngine& engine, const std::string& name,
              const std::string& reportPath) {
    app.host.SetAfterCancel("The job stays due; its drawings are the former or the new ones.");
    return BatchRun(app, engine, name).Run(reportPath);
}

RunEnd RunDueJob(AppState& app, engine::DrawingEngine& engine, JobQueue& jobs, const Job& job) {
    RunEnd end;
    if (HasNoReport(job)) return end;
    const auto begin = std::chrono::steady_clock::now();
    const auto writeEnd = [&] {
        end.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        WriteEnd(app, job, end);
    };
    WriteBegin(app, job);
    try {
        RunAndMark(jobs, job,
                   [&](const Job& trimmed) { end = RunJob(app, engine, trimmed.name, trimmed.idmsreport); });
    } catch (const std::exception& failure) {
        end.result = RunResult::Failed;
        end.words = FailureWords(failure);
        WriteToScheduleLog(app, end.words);
        writeEnd();
        throw;
    }
    writeEnd();
    return end;
}

std::string FailureWords(const std::exception& failure) {
    const auto* known = dynamic_cast<const RuntimeFailure*>(&failure);
    if (known == nullptr) return failure.what();
    return "Run-time error '" + std::to_string(static_cast<int>(known->Number())) + "': " + failure.what();
}

}  // namespace norvelis::commands
