#pragma once

#include <string>
#include <string_view>
#include <vector>

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

/// A sentence when no file of this name is there (any more), else empty.
std::string MissingReport(std::string_view path);

}  // namespace norvelis
