#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "store/connection.h"

// The jobs booked: rows of the table schedules, one for each time. A definition is not stored. Functions on a
// connection throw its failures (locked, write-protected, full); what was stored before stays.
namespace norvelis {

/// One row. Texts that may be null are optional.
struct Job {
    std::int64_t scheduleid = 0;
    std::string name;  ///< Not unique; it names the job's folder too.
    std::optional<std::string> address, tel, fax, email;
    std::optional<DateTime> nextschedule;
    std::string idmsreport;  ///< Full path of the schema report.
    bool processed = false;
    std::optional<std::string> visiofile;
};

/// The moment that the job is due, as general date text; empty for none.
std::string DueText(const Job& job);

enum class JobField { Name, Report, Telephone, NextSchedule };
/// What a person has to fill in first, and the words for it.
struct MissingField {
    JobField field;
    const char* words;
};
/// Nothing when the job can be booked. `nextSchedule` is the text of the next date.
std::optional<MissingField> MissingInput(const Job& job, std::string_view nextSchedule);

std::vector<Job> ListJobs(Connection& store);  ///< By name.
std::vector<Job> DueJobs(Connection& store,
                         DateTime now);  ///< Not processed, earlier than now; oldest row first.
/// The row when it is one of DueJobs.
std::optional<Job> DueJob(Connection& store, std::int64_t scheduleid, DateTime now);
std::optional<Job> FindJob(Connection& store, std::int64_t scheduleid);

/// A row with the job's details for each of the texts that is a date, each lasting at once; the process log
/// gets a line for each. `ids` takes the id of each row when it is stored, so that after a failure they say
/// which rows there are. An address, telephone or e-mail that is null is stored as a blank.
void CreateJobs(AppState& app, const Job& details, const std::vector<std::string>& times,
                std::vector<std::int64_t>& ids);

/// Stores the fields that the screen shows (all but fax) in the row of the job's id; a nextschedule that is
/// null stays as it was. False when the row is gone. So with the next three.
bool UpdateJob(Connection& store, const Job& job);
/// The job has run: its row is processed and keeps this as its drawing.
bool MarkJobProcessed(Connection& store, std::int64_t scheduleid, std::string_view visiofile);
bool DeleteJob(Connection& store, std::int64_t scheduleid);
bool RunAgain(Connection& store,
              std::int64_t scheduleid);  ///< Not processed any more: due when its time has passed.

}  // namespace norvelis
