#pragma once

#include <array>
#include <cstdint>

#include "base/dates.h"

namespace norvelis {

constexpr std::int32_t kDaily = 0, kWeekly = 1, kMonthly = 2;  ///< Values of Occurrence.

/// Positions in the editor's lists of weeks and of weekdays; 0 to 6 are Sunday to Saturday.
constexpr std::int32_t kLastWeek = 4;
constexpr std::int32_t kAnyDay = 7, kWorkday = 8, kWeekend = 9;

/// One schedule definition: on which days, at which times, between which dates. The widths are those of the
/// classic record, so a number that does not fit is refused where it is read. Clock hours are split into an
/// hour and a flag that adds 12 to it.
struct ScheduleRecord {
    DateTime LastActionDateTime = 0;  ///< Lower bound of NextActionDateTime when a definition is read.
    DateTime NextActionDateTime = 0;  ///< The time that the calculation advances.

    std::int32_t Occurrence = kDaily;  ///< Any other value leaves the date alone.
    std::int16_t Occurs_DailyNum = 0;
    std::int16_t Occurs_WeeklyNum = 0;
    std::array<std::int16_t, 8>
        Days{};  ///< 1 Sunday to 7 Saturday; the value 1 means selected. 0 is not used.
    std::int32_t Occurs_MonthlyOption = 0;  ///< 0: a day number ("Each"), else the nth weekday ("The").
    std::int16_t Occurs_Monthly_Each_Day = 0;
    std::int16_t Occurs_Monthly_Each_Num = 0;
    std::int32_t Occurs_Monthly_Every_Week = 0;     ///< 0 "1st" to 3 "4th", kLastWeek.
    std::int32_t Occurs_Monthly_Every_WeekDay = 0;  ///< 0 Sunday to 6 Saturday, kAnyDay, kWorkday, kWeekend.
    std::int16_t Occurs_Monthly_Every_Num = 0;

    std::int32_t Freq_Option = 0;  ///< 0: once a day, else repeatedly within the day.
    DateTime Freq_Once_Time = 0;
    std::int16_t Freq_Once_Hr = 0, Freq_Once_Min = 0;
    std::int32_t Freq_Once_AMPM = 0;
    std::int16_t Freq_Every_Interval = 0;
    std::int32_t Freq_Every_Interval_HrMin = 0;  ///< 0: hours, else minutes.
    DateTime Freq_Every_StartTime = 0;
    std::int16_t Freq_Every_StartHr = 0, Freq_Every_StartMin = 0;
    std::int32_t Freq_Every_Startampm = 0;
    DateTime Freq_Every_EndTime = 0;
    std::int16_t Freq_Every_EndHr = 0, Freq_Every_EndMin = 0;
    std::int32_t Freq_Every_Endampm = 0;
    DateTime Freq_BuildStartTime = 0;  ///< Time of day of the first run.

    bool DayRolled = false;  ///< The frequency step used the day up. Never stored.

    DateTime Duration_Start = 0;  ///< At midnight, as Duration_End.
    std::int16_t Duration_Start_Month = 0, Duration_Start_Day = 0, Duration_Start_Year = 0;
    std::int16_t Duration_End_Option = 0;  ///< 1: no end date; with every other value the end date counts.
    DateTime Duration_End = 0;
    std::int16_t Duration_End_Month = 0, Duration_End_Day = 0, Duration_End_Year = 0;
};

}  // namespace norvelis
