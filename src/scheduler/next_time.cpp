#include "scheduler/next_time.h"

#include <cmath>

#include "base/failure.h"

namespace norvelis {

namespace {

using Seconds = std::int64_t;  // since day zero; a sum of doubles could miss an end time by a rounding error

constexpr Seconds kMinute = 60, kHour = 60 * kMinute, kDay = 24 * kHour, kWeek = 7 * kDay;

Seconds ToSeconds(DateTime dateTime) {
    return std::llround(dateTime * kDay);
}
DateTime FromSeconds(Seconds seconds) {
    return static_cast<double>(seconds) / kDay;
}

Seconds ClockSeconds(int hour, int minute) {
    return hour * kHour + minute * kMinute;
}

Seconds FloorDivide(Seconds a, Seconds b) {
    return a / b - (a % b < 0 ? 1 : 0);
}
Seconds Midnight(Seconds moment) {
    return FloorDivide(moment, kDay) * kDay;
}

// Every date that a step forms passes here, those on its way included.
Seconds InRange(Seconds moment) {
    static const Seconds first = ToSeconds(ToDateTime({100, 1, 1, 0, 0, 0}));
    static const Seconds last = ToSeconds(ToDateTime({9999, 12, 31, 23, 59, 59}));
    if (moment < first || moment > last) throw RuntimeFailure(FailureNumber::Overflow);
    return moment;
}

int WeekdayOf(Seconds moment) {
    const Seconds day = FloorDivide(moment, kDay);  // day zero was a Saturday
    return static_cast<int>(day - 1 - FloorDivide(day - 1, 7) * 7) + 1;
}

/// `first` is the first of a month.
Seconds AddMonths(Seconds first, int months) {
    CalendarTime calendar = ToCalendar(FromSeconds(first));
    calendar.month += months;
    return InRange(ToSeconds(ToDateTime(calendar)));
}

bool HasEnded(const ScheduleRecord& record, Seconds next) {
    return record.Duration_End_Option != 1 && next > ToSeconds(record.Duration_End) + ClockSeconds(23, 59);
}

/// Moves within the day, or sets DayRolled when the day is used up. The start of the daily span counts only
/// then: a time before it goes on by the interval.
Seconds FrequencyStep(ScheduleRecord& record, Seconds next) {
    const Seconds today = Midnight(next);
    if (record.Freq_Option == 0) {
        record.DayRolled = true;
        return InRange(today + ClockSeconds(ClockHour(record.Freq_Once_Hr, record.Freq_Once_AMPM),
                                            record.Freq_Once_Min));
    }
    const Seconds unit = record.Freq_Every_Interval_HrMin != 0 ? kMinute : kHour;
    const Seconds candidate = InRange(next + record.Freq_Every_Interval * unit);
    const Seconds dayStart = ClockSeconds(ClockHour(record.Freq_Every_StartHr, record.Freq_Every_Startampm),
                                          record.Freq_Every_StartMin);
    const Seconds dayEnd =
        ClockSeconds(ClockHour(record.Freq_Every_EndHr, record.Freq_Every_Endampm), record.Freq_Every_EndMin);
    record.DayRolled = today + dayEnd <= candidate;
    return record.DayRolled ? InRange(today + dayStart) : candidate;
}

/// A week begins on Sunday; the count of weeks applies only when the step wraps round to its first selected
/// day.
Seconds WeeklyStep(const ScheduleRecord& record, Seconds next) {
    const int weekday = WeekdayOf(next);
    const auto selectedFrom = [&](int day) {
        while (day <= 7 && record.Days[static_cast<std::size_t>(day)] != 1) ++day;
        return day;
    };
    if (const int later = selectedFrom(weekday + 1); later <= 7)
        return InRange(next + (later - weekday) * kDay);
    const int first = selectedFrom(1);
    if (first > 7) return next;
    const Seconds inThisWeek = InRange(next + (first - weekday) * kDay);
    return InRange(inThisWeek + record.Occurs_WeeklyNum * kWeek);
}

/// From the first of a month to the weekday that the lists name. It is exact for the 1st to the 4th of a
/// weekday; what it makes of "Last", "Day", "Weekday" and "Weekend" is kept as people's schedules have it.
Seconds PlaceWeekday(const ScheduleRecord& record, Seconds next) {
    const Seconds week = record.Occurs_Monthly_Every_Week;
    const Seconds wanted = record.Occurs_Monthly_Every_WeekDay;
    const auto weekday = [&] { return WeekdayOf(next) - 1; };
    if (week == kLastWeek) {
        next = InRange(AddMonths(next, 1) - kDay);
        if (weekday() < wanted) next = InRange(next - kWeek);
    } else if (week != 0) {
        next = InRange(next + week * kWeek);
    }
    if (wanted == kWorkday) return next;
    if (weekday() > wanted) next = InRange(next + kWeek);
    return InRange(next + (wanted - weekday()) * kDay);
}

Seconds MonthlyStep(const ScheduleRecord& record, Seconds next) {
    const Seconds first = InRange(next - (ToCalendar(FromSeconds(next)).day - 1) * kDay);
    if (record.Occurs_MonthlyOption != 0) {
        return PlaceWeekday(record, AddMonths(first, record.Occurs_Monthly_Every_Num));
    }
    return InRange(AddMonths(first, record.Occurs_Monthly_Each_Num) +
                   (record.Occurs_Monthly_Each_Day - 1) * kDay);
}

Seconds DateStep(const ScheduleRecord& record, Seconds next) {
    switch (record.Occurrence) {
        case kDaily:
            return InRange(next + record.Occurs_DailyNum * kDay);
        case kWeekly:
            return WeeklyStep(record, next);
        case kMonthly:
            return MonthlyStep(record, next);
        default:
            return next;
    }
}

/// The run after `next`, whether or not it lies behind the end date.
Seconds Advance(ScheduleRecord& record, Seconds next) {
    // The first run lands on the start date itself, whatever the pattern of days says.
    if (const Seconds start = ToSeconds(record.Duration_Start); start > next) {
        return InRange(start + ToSeconds(record.Freq_BuildStartTime));
    }
    next = FrequencyStep(record, next);
    return record.DayRolled ? DateStep(record, next) : next;
}

}  // namespace

DateTime TimeOf(int hour, int minute) {
    return FromSeconds(ClockSeconds(hour, minute));
}

DateTime DateOf(int year, int month, int day) {
    if (year >= 0 && year < 100) year += year < 30 ? 2000 : 1900;
    if (year < 100 || year > 9999) throw RuntimeFailure(FailureNumber::Overflow);
    return FromSeconds(InRange(ToSeconds(ToDateTime({year, month, day, 0, 0, 0}))));
}

DateTime DateOnly(DateTime dateTime) {
    return FromSeconds(Midnight(ToSeconds(dateTime)));
}

int Weekday(DateTime date) {
    return WeekdayOf(ToSeconds(date));
}

DateTime GetNextTime(ScheduleRecord& record, DateTime now) {
    Seconds next = ToSeconds(record.NextActionDateTime);
    if (!HasEnded(record, next)) next = Advance(record, next);
    if (HasEnded(record, next)) next = InRange(ToSeconds(now) - kHour);
    return record.NextActionDateTime = FromSeconds(next);
}

}  // namespace norvelis
