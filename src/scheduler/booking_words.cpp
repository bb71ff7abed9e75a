#include "scheduler/booking_words.h"

#include <algorithm>
#include <cmath>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "scheduler/next_time.h"
#include "scheduler/schedule_xml.h"

namespace norvelis {

namespace {

constexpr std::string_view kDayNames[] = {"Sunday", "Monday",   "Tuesday", "Wednesday", "Thursday",
                                          "Friday", "Saturday", "Day",     "Weekday",   "Weekend"};
constexpr std::string_view kWeekNames[] = {"1st", "2nd", "3rd", "4th", "Last"};

bool IsMonthlyWeekday(const ScheduleRecord& record) {
    const auto week = record.Occurs_Monthly_Every_Week, day = record.Occurs_Monthly_Every_WeekDay;
    return record.Occurrence == kMonthly && record.Occurs_MonthlyOption != 0 && week >= 0 &&
           week <= kLastWeek && day >= 0 && day <= kWeekend;
}

/// Whether the list entry `named` means this day of the week, 0 Sunday to 6 Saturday.
bool Means(int named, int weekday) {
    const bool weekend = weekday == 0 || weekday == 6;
    if (named == kAnyDay) return true;
    if (named == kWorkday) return !weekend;
    if (named == kWeekend) return weekend;
    return named == weekday;
}

/// Whether the date is what the two lists say in plain words: the nth such day of its month, or the last.
bool IsNamedDay(DateTime moment, int week, int named) {
    const CalendarTime date = ToCalendar(moment);
    const auto isOne = [&](int day) {
        return Means(named, Weekday(ToDateTime({date.year, date.month, day, 0, 0, 0})) - 1);
    };
    if (!isOne(date.day)) return false;
    if (week == kLastWeek) {
        const int daysInMonth = ToCalendar(ToDateTime({date.year, date.month + 1, 0, 0, 0, 0})).day;
        for (int day = date.day + 1; day <= daysInMonth; ++day) {
            if (isOne(day)) return false;
        }
        return true;
    }
    int before = 0;
    for (int day = 1; day < date.day; ++day) before += isOne(day) ? 1 : 0;
    return before == week;
}

long long InSeconds(DateTime time) {
    return std::llround(time * 86400);
}

bool IsPast(DateTime time, DateTime now) {
    return InSeconds(time) < InSeconds(now);
}

constexpr auto kRunsAtOnce = " lies in the past and would run at once.";

bool IsOutsideHours(const ScheduleRecord& record, DateTime moment) {
    const auto time = InSeconds(moment - DateOnly(moment));
    return time < InSeconds(record.Freq_Every_StartTime) || time >= InSeconds(record.Freq_Every_EndTime);
}

std::vector<DateTime> MomentsOf(const std::vector<std::string>& dates) {
    std::vector<DateTime> moments;
    for (const auto& date : dates) {
        if (const auto moment = ParseDateTime(date)) moments.push_back(*moment);
    }
    return moments;
}

/// The dates of the schedule behind the last one booked; none where the calendar ends.
std::vector<std::string> FurtherDates(const XmlNode& scheduleElement, const std::string& last,
                                      std::size_t count, DateTime now) {
    if (count == 0) return {};
    try {
        constexpr bool kAlsoNext = true;
        const auto runs = Calculate(scheduleElement, last, static_cast<int>(count) - 1, now);
        return DatesToBook(runs.value(), kAlsoNext);
    } catch (const RuntimeFailure&) {
        return {};
    }
}

void AddOddDefinition(const ScheduleRecord& record, std::vector<std::string>& words) {
    const auto counted = [&](int count, const std::string& unit) {
        if (count == 0) words.push_back("The number of " + unit + " is 0.");
    };
    switch (record.Occurrence) {
        case kDaily:
            counted(record.Occurs_DailyNum, "days");
            break;
        case kWeekly:
            counted(record.Occurs_WeeklyNum, "weeks");
            if (std::none_of(record.Days.begin() + 1, record.Days.end(), [](int day) { return day == 1; }))
                words.emplace_back("No weekday is selected: the date does not change.");
            break;
        case kMonthly:
            counted(record.Occurs_MonthlyOption == 0 ? record.Occurs_Monthly_Each_Num
                                                     : record.Occurs_Monthly_Every_Num,
                    "months");
            break;
        default:
            break;
    }
    if (record.Freq_Option != 0) counted(record.Freq_Every_Interval, "hours or minutes");
}

/// The first of the times that is odd, and what is odd about it.
template <class IsOdd>
void AddFirst(std::vector<std::string>& words, const std::vector<DateTime>& times, IsOdd isOdd,
              const std::string& what) {
    const auto found = std::find_if(times.begin(), times.end(), isOdd);
    if (found != times.end()) words.push_back(WithWeekday(*found) + what);
}

}  // namespace

std::string WithWeekday(DateTime moment) {
    return std::string(kDayNames[Weekday(moment) - 1]) + " " + GeneralDateText(moment);
}

std::vector<std::string> OddTimes(const std::vector<DateTime>& times, DateTime now) {
    std::vector<std::string> words;
    if (times.empty()) words.emplace_back("Nothing is booked: the number of dates is 0.");
    AddFirst(
        words, times, [&](DateTime time) { return IsPast(time, now); }, kRunsAtOnce);
    const auto repeated = std::adjacent_find(
        times.begin(), times.end(), [](DateTime a, DateTime b) { return InSeconds(a) == InSeconds(b); });
    if (repeated != times.end()) words.push_back(WithWeekday(*repeated) + " comes more than once.");
    return words;
}

std::vector<std::string> OddTimes(const ScheduleRecord& record, const std::vector<DateTime>& times,
                                  DateTime now) {
    std::vector<std::string> words;
    AddOddDefinition(record, words);
    const auto odd = OddTimes(times, now);
    words.insert(words.end(), odd.begin(), odd.end());
    if (record.Freq_Option != 0) {
        AddFirst(
            words, times, [&](DateTime time) { return IsOutsideHours(record, time); },
            " lies outside the hours from " + GeneralDateText(record.Freq_Every_StartTime) + " to " +
                GeneralDateText(record.Freq_Every_EndTime) + ".");
    }
    if (IsMonthlyWeekday(record)) {
        const int week = record.Occurs_Monthly_Every_Week, named = record.Occurs_Monthly_Every_WeekDay;
        AddFirst(
            words, times, [&](DateTime time) { return !IsNamedDay(time, week, named); },
            " is what \"" + std::string(kWeekNames[week]) + " " + std::string(kDayNames[named]) +
                "\" comes out as.");
    }
    return words;
}

std::string NextDateIsNotBooked(DateTime next) {
    return "The next date, " + WithWeekday(next) + ", is not booked.";
}

std::vector<std::string> WordsBeforeBooking(const XmlNode& scheduleElement, const FutureRuns& runs,
                                            bool alsoNext, DateTime now) {
    constexpr std::size_t kShown = 10;
    std::vector<std::string> dates = DatesToBook(runs, alsoNext), words;
    const ScheduleRecord record = ReadScheduleXML(scheduleElement, now);
    const std::vector<DateTime> booked = MomentsOf(dates);
    if (!booked.empty()) {
        const std::size_t missing = kShown + 1 - std::min(kShown + 1, dates.size());
        const auto further = FurtherDates(scheduleElement, dates.back(), missing, now);
        dates.insert(dates.end(), further.begin(), further.end());
        const std::vector<DateTime> shown = MomentsOf(dates);
        words.push_back("First booked: " + WithWeekday(shown.front()));
        words.emplace_back("The schedule goes on:");
        for (std::size_t i = 1; i < std::min(shown.size(), kShown + 1); ++i)
            words.push_back(WithWeekday(shown[i]));
    }
    if (!alsoNext) {
        for (const DateTime next : MomentsOf({runs.txtNextSchedule}))
            words.push_back(NextDateIsNotBooked(next));
    }
    const auto odd = OddTimes(record, booked, now);
    words.insert(words.end(), odd.begin(), odd.end());
    return words;
}

std::string QuestionOfPastDate(const std::vector<std::string>& dates, DateTime now) {
    const std::vector<DateTime> moments = MomentsOf(dates);
    const auto past =
        std::find_if(moments.begin(), moments.end(), [now](DateTime time) { return IsPast(time, now); });
    if (past == moments.end()) return {};
    return WithWeekday(*past) + kRunsAtOnce + std::string(kLineBreak) + "Book it all the same?";
}

std::string MissingReport(std::string_view path) {
    return FileExists(path) ? "" : "The report " + NativePath(path) + " is missing now.";
}

}  // namespace norvelis
