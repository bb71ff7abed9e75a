#include "commands/schedule_commands.h"

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/log.h"
#include "extract/report_file.h"
#include "scheduler/booking_words.h"
#include "scheduler/job_folder.h"
#include "scheduler/schedule_xml.h"

namespace norvelis::commands {

namespace {

constexpr auto kDefinitionFilter = "Schedule definition (*.xml)";

bool Asks(AppState& app, const std::string& question, Answer defaultAnswer) {
    return app.host.MessageBox({question, {}, Buttons::YesNo, Icon::None, defaultAnswer}) == Answer::Yes;
}

std::string IdText(std::int64_t id) {
    return "schedule id:" + std::to_string(id);
}

/// "schedule id:7", or "3 schedules".
std::string Named(const std::vector<std::int64_t>& ids) {
    return ids.size() == 1 ? IdText(ids.front()) : std::to_string(ids.size()) + " schedules";
}

void SayMissing(AppState& app, std::int64_t id) {
    app.host.MessageBox("There is no " + IdText(id) + " any more.");
}

}  // namespace

std::optional<std::string> ChooseReport(AppState& app) {
    const auto file = app.host.OpenFileDialog("", "IDMS Report (*.txt);;All files (*)");
    if (!file || file->empty()) return std::nullopt;
    if (CheckReportFile(*file) == ReportCheck::Valid) return NativePath(*file);
    app.host.MessageBox("Invalid IDMS Report File. Action terminated");
    return std::nullopt;
}

bool CreateSchedules(AppState& app, const Job& details, const std::vector<std::string>& dates) {
    const std::string question = QuestionOfPastDate(dates, app.clock.Now());
    if (!question.empty() && !Asks(app, question, Answer::Yes)) return false;
    std::vector<std::int64_t> ids;
    try {
        CreateJobs(app, details, dates, ids);
    } catch (const RuntimeFailure& failure) {
        app.host.MessageBox(failure.what() + std::string(kLineBreak) + std::to_string(ids.size()) + " of " +
                            std::to_string(dates.size()) + " dates are booked.");
        return true;
    }
    app.host.MessageBox("Creating Schedule completed...");
    app.host.MessageBox("Schedule(s) added");
    return true;
}

bool UpdateSchedule(AppState& app, Job job, const std::string& nextDate) {
    job.nextschedule = ParseDateTime(nextDate);
    if (!job.nextschedule) {
        app.host.MessageBox("The next schedule is no date: " + nextDate);
        return false;
    }
    if (UpdateJob(*app.gConnection, job)) {
        app.host.MessageBox("Schedule Updated");
    } else {
        SayMissing(app, job.scheduleid);
    }
    return true;
}

bool DeleteSchedules(AppState& app, const std::vector<std::int64_t>& ids) {
    if (!Asks(app, "Proceed to Delete " + Named(ids) + "?", Answer::No)) return false;
    std::vector<std::int64_t> deleted;
    try {
        for (const std::int64_t id : ids) {
            if (DeleteJob(*app.gConnection, id)) {
                deleted.push_back(id);
            } else {
                SayMissing(app, id);
            }
        }
    } catch (const RuntimeFailure& failure) {
        WriteToErrorLog(app, "frm_Scheduler", "cmddelete", failure.what(),
                        static_cast<int>(failure.Number()));
    }
    if (deleted.size() == 1) app.host.MessageBox("Schedule id:" + std::to_string(deleted[0]) + " deleted.");
    if (deleted.size() > 1) app.host.MessageBox(Named(deleted) + " deleted.");
    return true;
}

bool RunSchedulesAgain(AppState& app, const std::vector<std::int64_t>& ids) {
    if (!Asks(app, "Run " + Named(ids) + " again?", Answer::Yes)) return false;
    try {
        for (const std::int64_t id : ids) {
            if (!RunAgain(*app.gConnection, id)) SayMissing(app, id);
        }
    } catch (const RuntimeFailure& failure) {
        WriteToErrorLog(app, "frm_Scheduler", "RunAgain", failure.what(), static_cast<int>(failure.Number()));
    }
    return true;
}

std::optional<XmlNode> OpenDefinition(AppState& app) {
    const auto file = app.host.OpenFileDialog("Open definition", kDefinitionFilter);
    if (!file || file->empty()) return std::nullopt;
    try {
        return LoadSchedule(ReadFile(*file));
    } catch (const std::runtime_error& reason) {
        app.host.MessageBox("No schedule in " + NativePath(*file) + ":" + std::string(kLineBreak) +
                            reason.what());
        return std::nullopt;
    }
}

void SaveDefinition(AppState& app, const XmlNode& scheduleElement) {
    const auto file = app.host.SaveFileDialog("Save definition", kDefinitionFilter, "xml");
    if (file && !file->empty()) WriteFile(*file, scheduleElement.Text() + "\n");
}

std::vector<std::string> DrawingsOfJob(const AppState& app, const std::string& name) {
    const std::string folder = JobFolder(app, std::string(Trim(name)));
    std::vector<std::string> drawings;
    for (const std::string& file : FilesIn(folder)) {
        if (LowerCase(file).ends_with(".vsd")) drawings.push_back(NativePath(folder + "\\" + file));
    }
    return drawings;
}

std::string WhereTheDrawingIs(const AppState& app, const Job& job) {
    const std::string file(Trim(job.visiofile.value_or("")));
    std::string words =
        file.empty() ? "The schedule names no Visio file." : "Visio File NOT Found:" + NativePath(file);
    words += kLineBreak;
    try {
        const auto drawings = DrawingsOfJob(app, job.name);
        if (drawings.empty())
            return words + "There is no drawing of a run in " + JobFolder(app, std::string(Trim(job.name)));
        words += "The run has drawn:";
        for (const std::string& drawing : drawings) words += std::string(kLineBreak) + drawing;
        return words;
    } catch (const RuntimeFailure& noFolder) {
        return words + noFolder.what();
    }
}

}  // namespace norvelis::commands
