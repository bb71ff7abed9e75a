#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scheduler/calculate.h"
#include "scheduler/schedule_record.h"

// What a person is shown about the times before they are booked.
namespace norvelis {

/// "Sunday 5/3/2026 6:00:00 AM".
std::string WithWeekday(DateTime moment);

/// What one may not expect of times that are to be booked, a sentence each: none of them, a past one, one
/// twice.
std::vector<std::string> OddTimes(const std::vector<DateTime>& times, DateTime now);

/// The same behind what one may not expect of the definition that gave the times, and of the times by it:
/// outside its hours, not on the day that its words say.
std::vector<std::string> OddTimes(const ScheduleRecord& record, const std::vector<DateTime>& times,
                                  DateTime now);

/// "The next date, Sunday 5/3/2026 6:00:00 AM, is not booked."
std::string NextDateIsNotBooked(DateTime next);

/// What stands beside the dates that are about to be booked, line by line: the first of them, the ten dates
/// of the schedule behind it, and what is odd. `alsoNext`: the next date is booked too. The element is the
/// one that gave the runs; its LastActionDateTime changes.
std::vector<std::string> WordsBeforeBooking(const XmlNode& scheduleElement, const FutureRuns& runs,
                                            bool alsoNext, DateTime now);

/// The question whether dates are to be booked of which one has passed; empty when none has.
std::string QuestionOfPastDate(const std::vector<std::string>& dates, DateTime now);

/// A sentence when no file of this name is there (any more), else empty.
std::string MissingReport(std::string_view path);

}  // namespace norvelis
