#include "scheduler/jobs.h"

#include <array>
#include <charconv>
#include <cmath>

#include "base/text.h"
#include "core/log.h"
#include "store/transaction.h"

namespace norvelis {

namespace {

const std::string kIsDue = "nextschedule < ? and processed = false ";
constexpr std::string_view kOneRow = "Select * FROM schedules where scheduleid = ?";

/// A moment as the store compares it: whole seconds, so that a job booked for this second is not yet due.
std::string StoredDate(DateTime moment) {
    constexpr double kSecondsPerDay = 86400;
    std::array<char, 32> text{};
    const double seconds = std::round(moment * kSecondsPerDay);
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), seconds / kSecondsPerDay).ptr};
}

Job JobOf(const Recordset& row) {
    Job job;
    job.scheduleid = std::stoll(row.Text("scheduleid"));
    job.name = row.Text("name");
    job.address = row.Value("address");
    job.tel = row.Value("tel");
    job.fax = row.Value("fax");
    job.email = row.Value("email");
    if (const auto date = row.Value("nextschedule")) job.nextschedule = Val(*date);
    job.idmsreport = row.Text("idmsreport");
    job.processed = row.Text("processed") == "1";
    job.visiofile = row.Value("visiofile");
    return job;
}

/// The whole table in one statement: reading 2,000 rows one by one would be felt.
std::vector<Job> JobsOf(Connection& store, const std::string& condition,
                        std::initializer_list<std::string_view> values = {}) {
    std::vector<Job> jobs;
    Recordset rows = store.Select(
        "Select scheduleid, name, address, tel, fax, email, nextschedule, idmsreport, processed, visiofile "
        "FROM schedules " +
            condition,
        values);
    for (; !rows.Eof(); rows.MoveNext()) jobs.push_back(JobOf(rows));
    return jobs;
}

void SetDetails(Recordset& row, const Job& job) {
    row.Set("name", job.name);
    row.Set("address", job.address.value_or(" "));
    row.Set("tel", job.tel.value_or(" "));
    row.Set("email", job.email.value_or(" "));
    row.Set("idmsreport", job.idmsreport);
    row.Set("processed", job.processed ? "1" : "0");
    if (job.nextschedule) row.Set("nextschedule", StoredDate(*job.nextschedule));
}

/// Looks the row up and changes it as one step, so that nobody deletes it between the two.
template <class Change>
bool ChangeRow(Connection& store, std::int64_t scheduleid, Change change) {
    Transaction transaction(store);
    Recordset row = store.Select(kOneRow, {std::to_string(scheduleid)});
    const bool found = !row.Eof();
    if (found) {
        change(row);
        row.Update();
    }
    transaction.Commit();
    return found;
}

}  // namespace

std::string DueText(const Job& job) {
    return job.nextschedule ? GeneralDateText(*job.nextschedule) : "";
}

std::optional<MissingField> MissingInput(const Job& job, std::string_view nextSchedule) {
    const auto isEmpty = [](std::string_view text) { return Trim(text).empty(); };
    if (isEmpty(job.name)) return MissingField{JobField::Name, "Name required"};
    if (isEmpty(job.idmsreport)) return MissingField{JobField::Report, "Report Name required"};
    if (isEmpty(job.tel.value_or("")) && isEmpty(job.email.value_or("")))
        return MissingField{JobField::Telephone, "Must Enter TEL or Email"};
    if (isEmpty(nextSchedule)) return MissingField{JobField::NextSchedule, "Next Schedule date missing"};
    return std::nullopt;
}

std::vector<Job> ListJobs(Connection& store) {
    return JobsOf(store, "order by name, scheduleid");
}

std::vector<Job> DueJobs(Connection& store, DateTime now) {
    return JobsOf(store, "where " + kIsDue + "order by scheduleid", {StoredDate(now)});
}

std::optional<Job> DueJob(Connection& store, std::int64_t scheduleid, DateTime now) {
    const auto jobs = JobsOf(store, "where " + kIsDue + "and scheduleid = ?",
                             {StoredDate(now), std::to_string(scheduleid)});
    if (jobs.empty()) return std::nullopt;
    return jobs.front();
}

std::optional<Job> FindJob(Connection& store, std::int64_t scheduleid) {
    const Recordset row = store.Select(kOneRow, {std::to_string(scheduleid)});
    if (row.Eof()) return std::nullopt;
    return JobOf(row);
}

void CreateJobs(AppState& app, const Job& details, const std::vector<std::string>& times,
                std::vector<std::int64_t>& ids) {
    Recordset rows = app.gConnection->Select("Select * FROM schedules");
    for (const std::string& time : times) {
        const auto date = ParseDateTime(time);
        if (details.idmsreport.empty() || !date) continue;
        Job job = details;
        job.nextschedule = *date;
        job.processed = false;
        rows.AddNew();
        SetDetails(rows, job);
        rows.Update();
        ids.push_back(std::stoll(rows.Text("scheduleid")));
        WriteToScheduleLog(app, "Schedule: " + details.name + " For time:" + time + " Built");
    }
}

bool UpdateJob(Connection& store, const Job& job) {
    return ChangeRow(store, job.scheduleid, [&](Recordset& row) {
        SetDetails(row, job);
        row.Set("visiofile", job.visiofile.value_or(" "));
    });
}

bool MarkJobProcessed(Connection& store, std::int64_t scheduleid, std::string_view visiofile) {
    return ChangeRow(store, scheduleid, [&](Recordset& row) {
        row.Set("visiofile", visiofile);
        row.Set("processed", "1");
    });
}

bool DeleteJob(Connection& store, std::int64_t scheduleid) {
    Transaction transaction(store);
    const bool found = FindJob(store, scheduleid).has_value();
    store.Execute("delete FROM schedules where scheduleid = ?", {std::to_string(scheduleid)});
    transaction.Commit();
    return found;
}

bool RunAgain(Connection& store, std::int64_t scheduleid) {
    return ChangeRow(store, scheduleid, [](Recordset& row) { row.Set("processed", "0"); });
}

}  // namespace norvelis
