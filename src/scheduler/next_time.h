#pragma once

#include "scheduler/schedule_record.h"

// The calendar of schedules: pure arithmetic on a record, in whole seconds. A date outside the years 100 to
// 9999 is RuntimeFailure 6, overflow, wherever it comes up.
namespace norvelis {

/// The part of a day that has passed at a clock time. Nothing is out of range: 24 hours are one day.
DateTime TimeOf(int hour, int minute);

/// The hour of a clock field and its flag.
inline int ClockHour(int hour, int ampm) {
    return ampm != 0 ? hour + 12 : hour;
}

/// Midnight of a date given as numbers. Months and days beyond their range carry over; years below 100 are
/// read by the usual window (0 to 29 are 2000 to 2029).
DateTime DateOf(int year, int month, int day);

DateTime DateOnly(DateTime dateTime);  ///< Midnight of the same date.
int Weekday(DateTime date);            ///< 1 Sunday to 7 Saturday.

/// The next run after record.NextActionDateTime. The result is left there too, so repeated calls walk from
/// run to run. A schedule that has ended gives one hour before `now`: nothing else says so. After a failure
/// the record's time is as it was.
DateTime GetNextTime(ScheduleRecord& record, DateTime now);

}  // namespace norvelis
